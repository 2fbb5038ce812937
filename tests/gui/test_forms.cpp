#include "app/MatchList.h"
#include "app/RecordForm.h"
#include "app/WrappingSynopsisView.h"
#include "look/DOSField.h"

#include <QTableView>
#include <QTest>

class FormsTest : public QObject {
    Q_OBJECT

private slots:
    void formReadsTrimmedValuesAndKeepsTheEditableOrder() {
        RecordForm form;
        DOSField* code = form.add("code", "CÓDIGO", "COD-0001", false);
        DOSField* name = form.add("name", "TÍTULO EM PORTUGUÊS", "  TUBARÃO\t");
        WrappingSynopsisView* synopsis = form.addLong("sinapse", "SINOPSE", "\n Um tubarão ataca.\n\n");
        DOSField* year = form.add("year", "ANO", "");

        QCOMPARE(form.value("name"), QStringLiteral("TUBARÃO"));
        QCOMPARE(form.value("sinapse"), QStringLiteral("Um tubarão ataca."));
        QCOMPARE(form.value("missing"), QString());
        QVERIFY(code->isReadOnly());
        // The Tab order leaves out what cannot be typed in.
        QCOMPARE(form.controls(), QList<QWidget*>({name, synopsis, year}));
    }

    void matchListPassesTheChosenId() {
        MatchList matches;
        matches.resize(600, 90);
        QStringList chosen;
        matches.onSelect = [&chosen](const QString& id) {
            chosen.append(id);
        };
        matches.set({{"F7", "COD-0007 — ALIEN — R$ 4,00"}, {"F9", "COD-0009 — TUBARÃO — R$ 5,00"}});
        matches.show();
        QVERIFY(QTest::qWaitForWindowExposed(&matches));

        QTableView* list = matches.list();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(list->model()->index(1, 0)).center());
        QCOMPARE(chosen, QStringList{"F9"});

        list->setFocus();
        list->selectRow(0);
        QTest::keyClick(list, Qt::Key_Return);
        QCOMPARE(chosen, QStringList({"F9", "F7"}));

        // New rows start unselected: choosing then passes nothing.
        matches.set({{"F3", "COD-0003 — E.T. — R$ 5,00"}});
        matches.choose();
        QCOMPARE(chosen.size(), 2);
    }
};

QTEST_MAIN(FormsTest)
#include "test_forms.moc"
