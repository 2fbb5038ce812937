#include "records/JSONWriter.h"
#include "records/StoreEncoder.h"
#include "records/StoreJSON.h"
#include "support/Files.h"

#include <QFile>
#include <QRandomGenerator>
#include <QtTest>
#include <charconv>
#include <limits>

namespace {

// Every kind of text and number the encoder treats apart, spread over the
// records with different strides so neighbours differ.
// clang-format off
const QStringList texts = {
    "", "a", QStringLiteral("Ação, coração e pão"), "\"aspas\" e \\barra\\", "tab\tlinha\nretorno\r",
    QString::fromUtf16(u"\u0001\u001f\u007f\u0080\u00ff"), QStringLiteral("🎬 fita 📼"), QString(QChar(0xD800)) + "x",
    QString(QChar(0xDC00)), "fim" + QString(QChar(0xDBFF)), QStringLiteral("日本語のビデオ"), "<script>&'\"",
    QString(300, 'x') + QStringLiteral("é")
};
const QList<qint64> integers = {
    0, -1, 1, 550, -2500, std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::max(), 1000000};
const QList<double> dates = {
    0.0, -0.0, 0.001, 0.0001, 1e-7, 700000000, 700000000.25, 700000000.125, 700000000.001, 812345678.123456789,
    0.1 + 0.2, -1234.75, 1e12, 999999999999.999, 1e15, 1e21, 1e300, 5e-324, 86400, 123456789012.5, -700000000.5, 0.5,
    10, 1.5e-3, 999.9995, 4503599627370496.5
};
// clang-format on

template <typename T> T pick(const QList<T>& pool, int index, int stride) {
    return pool[(index * stride + stride / 2) % pool.size()];
}
template <typename T> std::optional<T> maybe(const QList<T>& pool, int index, int stride) {
    if (index % 3 == 1)
        return std::nullopt;
    return pick(pool, index, stride);
}

Store variedStore(int records) {
    Store store;
    store.locadoraName = texts[2];
    store.reportRentalBaseline = 7;
    for (int i = 0; i < records; ++i) {
        store.films.append(Film{pick(texts, i, 1), pick(texts, i, 5), pick(texts, i, 7), pick(integers, i, 3),
                                pick(integers, i, 5), maybe(integers, i, 1), maybe(integers, i, 7),
                                i % 4 == 0 ? std::optional(i % 8 == 0) : std::nullopt, maybe(texts, i, 3),
                                maybe(texts, i, 11), i % 5 == 0 ? std::optional(true) : std::nullopt});
        store.customers.append(Customer{pick(texts, i, 3), pick(texts, i, 1), pick(texts, i, 9), maybe(integers, i, 5),
                                        maybe(texts, i, 7), maybe(texts, i, 5), maybe(texts, i, 1), maybe(texts, i, 2),
                                        i % 2 == 0 ? std::optional(false) : std::nullopt});
    }
    for (int i = 0; i < records * 3; ++i) {
        store.rentals.append(Rental{
            pick(texts, i, 7), pick(texts, i, 2), pick(texts, i, 3), Instant{pick(dates, i, 1)},
            Instant{pick(dates, i, 5)}, i % 3 == 1 ? std::nullopt : std::optional(Instant{pick(dates, i, 7)}),
            pick(integers, i, 1), pick(integers, i, 3), maybe(integers, i, 5),
            i % 2 == 0 ? std::optional(i % 4 == 0) : std::nullopt, maybe(integers, i, 7), maybe(integers, i, 2)});
        store.entries.append(
            Entry{pick(texts, i, 5), Instant{pick(dates, i, 3)}, pick(texts, i, 4), pick(integers, i, 7)});
    }
    return store;
}

QByteArray golden(const char* name) {
    return fileBytes(QStringLiteral(CINEFITA_SOURCE_DIR "/tests/records/data/") + name);
}

// One edit of the store between two saves, as the screens and restore make them.
using Edit = std::function<void(Store&)>;

constexpr qsizetype run = StoreEncoder::runLength;

} // namespace

Q_DECLARE_METATYPE(QList<Edit>)

class TestJSONEncoding : public QObject {
    Q_OBJECT

private slots:
    // The stored document's bytes must not change: the golden files were written
    // by the encoder before it was made faster.
    void sameBytesAsBefore() {
        QCOMPARE(encodeStore(variedStore(16)), golden("varied-compact.json"));
        QCOMPARE(encodeStore(variedStore(16), JSONLayout::sortedIndented), golden("varied-indented.json"));
    }

    // The quick path for dates must write what the general conversion writes,
    // including where that one prefers "7e+08" or has to round.
    void numbersAsTheGeneralConversionWritesThem() {
        QList<double> values = dates;
        auto* random = QRandomGenerator::global();
        for (int i = 0; i < 200000; ++i) {
            const qint64 thousandths = qint64(random->bounded(1e15)) / qint64(std::pow(10, random->bounded(15)));
            const double scale = i % 3 == 0 ? 1000.0 : std::pow(10.0, random->bounded(-3, 5));
            values << double(thousandths) / scale << -double(thousandths) / 1000.0;
            quint64 bits = random->generate64();
            double anything;
            std::memcpy(&anything, &bits, sizeof anything);
            if (std::isfinite(anything))
                values << anything;
        }
        for (double value : values) {
            char expected[32], actual[32];
            const auto expectedEnd = std::to_chars(expected, expected + 32, value).ptr;
            const auto actualEnd = writeShortestNumber(actual, value);
            QCOMPARE(QByteArray(actual, actualEnd - actual), QByteArray(expected, expectedEnd - expected));
        }
    }

    // A kept buffer is reused, holds only the latest document, and grows safely
    // past any first guess of the size.
    void keptBufferHoldsExactlyTheLatestDocument() {
        const Store large = variedStore(400);
        Store small = variedStore(2);
        small.films.first().sinapse = QString(200000, QChar(0x00E9)) + QString(100000, QChar(0x0001));
        QByteArray buffer;
        encodeStore(large, JSONLayout::compact, buffer);
        QCOMPARE(buffer, encodeStore(large));
        const char* memory = buffer.constData();
        encodeStore(variedStore(1), JSONLayout::compact, buffer);
        QCOMPARE(buffer, encodeStore(variedStore(1)));
        QCOMPARE(buffer.constData(), memory);
        encodeStore(small, JSONLayout::compact, buffer);
        QCOMPARE(decodeStore(buffer).films.first().sinapse, small.films.first().sinapse);
    }

    // The saved text is the encoder's: a kept run reused after its records
    // changed, a comma lost at a run's edge, or a stale run left after the list
    // shrank would each store a document that is not the store.
    void keptRunsWriteThePlainDocument_data() {
        QTest::addColumn<Store>("start");
        QTest::addColumn<QList<Edit>>("edits");
        const Store large = variedStore(int(run)); // rentals and entries fill three runs
        const Edit rent = [](Store& s) {
            s.rentals.append(s.rentals.first());
            s.entries.append(s.entries.first());
        };
        QTest::newRow("rentals across a run's edge") << large << QList<Edit>(run + 2, rent);
        QTest::newRow("a return in a middle run") << large << QList<Edit>{[](Store& s) {
            s.rentals[run + 7].returned = Instant{800000000.5};
            s.rentals[run + 7].fine = 300;
        }};
        QTest::newRow("only the settings") << large << QList<Edit>{[](Store& s) {
            s.locadoraName = "Nova";
            s.reportRentalBaseline = 99;
        }};
        QTest::newRow("a smaller store restored, then grown back") << large
                                                                   << QList<Edit>{[](Store& s) { s = variedStore(3); },
                                                                                  [large](Store& s) {
                                                                                      s = large;
                                                                                      s.rentals.resize(run * 2);
                                                                                  },
                                                                                  [large](Store& s) {
                                                                                      s = large;
                                                                                  }};
        QTest::newRow("a store of the same size with other records") << large << QList<Edit>{[](Store& s) {
            std::reverse(s.rentals.begin(), s.rentals.end());
            std::rotate(s.films.begin(), s.films.begin() + 1, s.films.end());
        }};
        QTest::newRow("lists emptied and filled") << variedStore(1)
                                                  << QList<Edit>{[](Store& s) { s = Store{}; },
                                                                 [](Store& s) {
                                                                     s = variedStore(2);
                                                                 }};
    }
    void keptRunsWriteThePlainDocument() {
        QFETCH(Store, start);
        QFETCH(QList<Edit>, edits);
        StoreEncoder encoder;
        QByteArray document;
        encoder.encode(start, document);
        QCOMPARE(document, encodeStore(start));
        Store store = start;
        for (const Edit& edit : edits) {
            edit(store); // the encoder shares the lists, so an edit in place must still be seen
            encoder.encode(store, document);
            QCOMPARE(document, encodeStore(store));
        }
    }

    // A date JSON cannot hold stops the encoding halfway through a run; that run's
    // text must not be reused when the store it was kept for is saved again.
    void refusedStoreLeavesNoHalfWrittenRun() {
        const Store good = variedStore(int(run));
        Store bad = good;
        bad.rentals[run + 9].start = Instant{std::numeric_limits<double>::infinity()};
        StoreEncoder encoder;
        QByteArray document;
        encoder.encode(good, document);
        QVERIFY_THROWS_EXCEPTION(StoreJSONError, encoder.encode(bad, document));
        Store next = good;
        next.entries.append(next.entries.first());
        encoder.encode(next, document);
        QCOMPARE(document, encodeStore(next));
    }
};

QTEST_APPLESS_MAIN(TestJSONEncoding)
#include "test_jsonencoding.moc"
