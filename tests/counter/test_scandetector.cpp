#include "counter/ScanDetector.h"

#include <QTest>

namespace {

// Keys as text: '\n' Return, '\t' Tab, '~' an arrow key, anything else printable.
struct Typed {
    QString keys;
    qint64 gap;         // ms between these keys
    qint64 pause = 200; // ms before the first of them
};

// What the window ends up with when the detector's steps are obeyed as the key filter
// obeys them: a text field (restored on a scan), or with no field the keys that reach
// the key map in order (Return as "⏎", the arrow as "·"). Held keys expire as the
// hold timer would fire, before the next key arrives.
struct Outcome {
    QString delivered;
    QStringList scans;
};

Outcome run(const QList<Typed>& typing, bool inField) {
    ScanDetector detector;
    qint64 clock = 0;
    detector.setClock([&clock] { return clock; });
    Outcome outcome;
    QString snapshot;
    const auto deliver = [&](const ScanKey& key) {
        outcome.delivered += key.kind == ScanKey::Printable    ? key.text
                             : key.kind == ScanKey::Terminator ? QStringLiteral("⏎")
                                                               : QStringLiteral("·");
    };
    const auto replay = [&](const QList<ScanKey>& keys) {
        for (const ScanKey& key : keys)
            deliver(key);
    };
    for (const Typed& part : typing) {
        for (qsizetype i = 0; i < part.keys.size(); ++i) {
            const QChar c = part.keys.at(i);
            clock += i == 0 ? part.pause : part.gap;
            replay(detector.expired());
            const ScanKey key{.kind = c == u'\n' || c == u'\t' ? ScanKey::Terminator
                                      : c == u'~'              ? ScanKey::Other
                                                               : ScanKey::Printable,
                              .text = QString(c),
                              .timestamp = clock};
            const ScanStep step = detector.feed(key, !inField);
            replay(step.replay);
            if (step.runStarts)
                snapshot = outcome.delivered;
            if (step.action == ScanStep::Pass)
                deliver(key);
            if (step.scan) {
                outcome.scans.append(*step.scan);
                if (inField)
                    outcome.delivered = snapshot;
            }
        }
    }
    clock += 1000;
    replay(detector.expired());
    return outcome;
}

} // namespace

class TestScanDetector : public QObject {
    Q_OBJECT

private slots:
    void scansAndTyping_data() {
        QTest::addColumn<QList<Typed>>("typing");
        QTest::addColumn<QString>("delivered");
        QTest::addColumn<QStringList>("scans");
        const auto both = [](const char* name, const QList<Typed>& typing, const QString& delivered,
                             const QStringList& scans = {}) {
            QTest::addRow("%s, in a field", name) << typing << delivered << scans;
            QTest::addRow("%s, no field", name) << typing << delivered << scans;
        };
        both("scanner at 20 ms after hand typing", {{"ab", 100}, {"COD-0001-002\n", 20}}, "ab", {"COD-0001-002"});
        both("typist at 60 ms", {{"cod-0001-002\n", 60}}, "cod-0001-002⏎");
        both("four fast keys then Return", {{"0001\n", 10}}, "0001⏎");
        both("fast burst ending in a letter", {{"COD-0001-00A", 10}}, "COD-0001-00A");
        both("Tab ends a scan", {{"x", 100}, {"CLI-0001\t", 5}}, "x", {"CLI-0001"});
        both("Return too late", {{"COD-0001-002", 20}, {"\n", 0, 40}}, "COD-0001-002⏎");
        both("an arrow breaks the run", {{"COD-~0001\n", 10}}, "COD-·0001⏎");
        both("two scans in a row", {{"0001-001\n", 20}, {"0001-002\n", 20}}, "", {"0001-001", "0001-002"});
    }
    void scansAndTyping() {
        QFETCH(QList<Typed>, typing);
        QFETCH(QString, delivered);
        QFETCH(QStringList, scans);
        const Outcome outcome = run(typing, QByteArray(QTest::currentDataTag()).endsWith("in a field"));
        QCOMPARE(outcome.delivered, delivered);
        QCOMPARE(outcome.scans, scans);
    }

    void keyKinds_data() {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("kind"); // -1: not fed at all
        QTest::newRow("upper-case letter")
            << int(Qt::Key_C) << int(Qt::ShiftModifier) << "C" << int(ScanKey::Printable);
        QTest::newRow("keypad digit") << int(Qt::Key_1) << int(Qt::KeypadModifier) << "1" << int(ScanKey::Printable);
        QTest::newRow("keypad Enter") << int(Qt::Key_Enter) << int(Qt::KeypadModifier) << "\r"
                                      << int(ScanKey::Terminator);
        QTest::newRow("Tab") << int(Qt::Key_Tab) << 0 << "\t" << int(ScanKey::Terminator);
        QTest::newRow("Control-C") << int(Qt::Key_C) << int(Qt::ControlModifier) << "\x03" << int(ScanKey::Other);
        QTest::newRow("F3") << int(Qt::Key_F3) << 0 << "" << int(ScanKey::Other);
        QTest::newRow("Shift alone") << int(Qt::Key_Shift) << int(Qt::ShiftModifier) << "" << -1;
    }
    void keyKinds() {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(QString, text);
        QFETCH(int, kind);
        const std::optional<ScanKey> scan = scanKey(key, modifiers, text, 0);
        QCOMPARE(scan ? int(scan->kind) : -1, kind);
    }

    // A shortcut letter typed alone acts once the scanner's gap has passed by the
    // caller's clock, not before, and not only when another key comes.
    void heldLetterWaitsForTheClock() {
        ScanDetector detector;
        qint64 clock = 1000;
        detector.setClock([&clock] { return clock; });
        QCOMPARE(detector.feed({.kind = ScanKey::Printable, .text = "c", .timestamp = 7}, true).action, ScanStep::Hold);
        clock += ScanDetector::holdLimit - 1;
        QCOMPARE(detector.expiresIn(), std::optional<qint64>(1));
        QVERIFY(detector.expired().isEmpty());
        clock += 1;
        const QList<ScanKey> typed = detector.expired();
        QCOMPARE(typed.size(), 1);
        QCOMPARE(typed.first().text, "c");
        QVERIFY(!detector.expiresIn());
    }
};

QTEST_GUILESS_MAIN(TestScanDetector)
#include "test_scandetector.moc"
