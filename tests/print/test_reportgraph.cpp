#include "print/ReportGraph.h"

#include <QTest>
#include <limits>

class TestReportGraph : public QObject {
    Q_OBJECT

private slots:
    void reportGraph_data() {
        QTest::addColumn<qint64>("value");
        QTest::addColumn<qint64>("maximum");
        QTest::addColumn<int>("blocks");

        QTest::newRow("nothing") << qint64(0) << qint64(10) << 0;
        QTest::newRow("no maximum") << qint64(5) << qint64(0) << 0;
        QTest::newRow("half") << qint64(5) << qint64(10) << 8;
        QTest::newRow("2.5 goes up") << qint64(5) << qint64(32) << 3;
        QTest::newRow("tiny still shows") << qint64(1) << qint64(1000) << 1;
        QTest::newRow("above maximum") << qint64(20) << qint64(10) << 16;
        QTest::newRow("negative value") << qint64(-5) << qint64(10) << 1;
        QTest::newRow("huge ratio") << std::numeric_limits<qint64>::max() << qint64(1) << 16;
    }
    void reportGraph() {
        QFETCH(qint64, value);
        QFETCH(qint64, maximum);
        QFETCH(int, blocks);
        QCOMPARE(::reportGraph(value, maximum), QString(blocks, QChar(0x2588)) + QString(16 - blocks, QChar(0x2592)));
    }
};

QTEST_APPLESS_MAIN(TestReportGraph)
#include "test_reportgraph.moc"
