#include "look/DOSProgress.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <QtTest>

namespace {

class CountedPaints : public QWidget {
public:
    int paints = 0;

protected:
    void paintEvent(QPaintEvent*) override { ++paints; }
};

QString bar(int full) {
    return QStringLiteral("[") + QString(full, QChar(u'█')) + QString(20 - full, QChar(u'░')) + u']';
}

} // namespace

class TestProgress : public QObject {
    Q_OBJECT

private slots:
    void line_data() {
        QTest::addColumn<qint64>("done");
        QTest::addColumn<qint64>("total");
        QTest::addColumn<QString>("shown");
        QTest::newRow("nothing yet") << qint64(0) << qint64(88) << bar(0) + QStringLiteral("  0%");
        QTest::newRow("rounds down") << qint64(99) << qint64(100) << bar(19) + QStringLiteral("  99%");
        QTest::newRow("all") << qint64(5) << qint64(5) << bar(20) + QStringLiteral("  100%");
        QTest::newRow("past the total") << qint64(12) << qint64(10) << bar(20) + QStringLiteral("  100%");
        QTest::newRow("no total") << qint64(3) << qint64(0) << bar(0) + QStringLiteral("  0%");
    }
    void line() {
        QFETCH(qint64, done);
        QFETCH(qint64, total);
        QFETCH(QString, shown);
        QCOMPARE(DOSProgress::line(QStringLiteral("EXPORTANDO"), done, total),
                 QStringLiteral("EXPORTANDO  │  ") + shown);
    }

    void shortWorkLeavesTheStatusAlone() {
        QLabel status(QStringLiteral("SALVO NO BANCO LOCAL"));
        qint64 now = 1000;
        {
            DOSProgress progress(&status, QStringLiteral("IMPORTANDO CSV"), [&now] { return now; });
            for (now = 1000; now < 1000 + DOSProgress::quietMs; now += 100) {
                progress.callback()(now - 1000, 1000);
                QCOMPARE(status.text(), QStringLiteral("SALVO NO BANCO LOCAL"));
            }
            QVERIFY(!progress.shown());
        }
        QCOMPARE(status.text(), QStringLiteral("SALVO NO BANCO LOCAL"));
    }

    // Past half a second the line shows and the window repaints, while a key
    // pressed meanwhile is dropped rather than acted on after the work.
    void longWorkShowsRepaintsAndDropsKeys() {
        QWidget window;
        auto* layout = new QVBoxLayout(&window);
        auto* status = new QLabel(QStringLiteral("EXPORTADO  │  x.csv"));
        auto* field = new QLineEdit;
        auto* picture = new CountedPaints;
        picture->setMinimumSize(40, 40);
        layout->addWidget(status);
        layout->addWidget(field);
        layout->addWidget(picture);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        field->setFocus();
        QCoreApplication::processEvents();

        qint64 now = 0;
        {
            DOSProgress progress(status, QStringLiteral("IMPORTANDO CSV"), [&now] { return now; });
            const int paintsBefore = picture->paints;
            picture->update();
            QCoreApplication::postEvent(field, new QKeyEvent(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, "a"));
            now = 600;
            progress.report(3, 10);
            QVERIFY(progress.shown());
            QCOMPARE(status->text(), DOSProgress::line(QStringLiteral("IMPORTANDO CSV"), 3, 10));
            QVERIFY(picture->paints > paintsBefore);
        }
        QCOMPARE(status->text(), QStringLiteral("EXPORTADO  │  x.csv"));
        QCoreApplication::processEvents();
        QCOMPARE(field->text(), QString());
    }
};

QTEST_MAIN(TestProgress)
#include "test_progress.moc"
