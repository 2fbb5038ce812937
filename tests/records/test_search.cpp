#include "records/Ordering.h"
#include "records/Search.h"

#include <QTest>

namespace {

// "title#code" (no "#": absent code); ids are the positions in the list.
QList<Film> films(const QStringList& lines) {
    QList<Film> list;
    for (const QString& line : lines) {
        const QStringList parts = line.split(u'#');
        list.append({.id = QString::number(list.size()), .title = parts[0]});
        if (parts.size() > 1)
            list.last().code = parts[1].toLongLong();
    }
    return list;
}

QStringList ids(const QList<Film>& list) {
    QStringList result;
    for (const Film& film : list)
        result.append(film.id);
    return result;
}

} // namespace

class TestSearch : public QObject {
    Q_OBJECT

private slots:
    void orderedFilms_data() {
        QTest::addColumn<QStringList>("films");
        QTest::addColumn<bool>("alphabetical");
        QTest::addColumn<QStringList>("expected"); // ids

        QTest::newRow("folded equal falls to code")
            << QStringList{"acao#2", "Aventura#1", "Ação#1", "ACAO#3"} << true << QStringList{"2", "0", "3", "1"};
        QTest::newRow("equal by both keys stays")
            << QStringList{"matrix", "Matrix#0", "MATRIX"} << true << QStringList{"0", "1", "2"};
        QTest::newRow("code alone") << QStringList{"A#3", "B", "C#1", "D#-2", "E#0"} << false
                                    << QStringList{"3", "1", "4", "2", "0"};
    }
    void orderedFilms() {
        QFETCH(QStringList, films);
        QFETCH(bool, alphabetical);
        QFETCH(QStringList, expected);
        QCOMPARE(ids(::orderedFilms(::films(films), alphabetical)), expected);
    }

    void matches_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("query");
        QTest::addColumn<bool>("expected");
        QTest::newRow("upper-case query") << "O Poderoso Chefão" << QString("CHEFAO") << true;
        QTest::newRow("decomposed text") << "Corac\u0327a\u0303o" << QString("coração") << true;
        QTest::newRow("not contiguous") << "Ação Total" << QString("acaototal") << false;
        QTest::newRow("empty query") << "Ação Total" << QString() << false;
        QTest::newRow("only an accent") << "Ação Total" << QString("\u0301") << false;
    }
    void matches() {
        QFETCH(QString, text);
        QFETCH(QString, query);
        QFETCH(bool, expected);
        QCOMPARE(::matches(text, query), expected);
    }

    void matchingFilms_data() {
        QTest::addColumn<QString>("query");
        QTest::addColumn<QStringList>("expected"); // ids of "Apollo 12#7", "Tubarão#12", "Doze#3", "Sem código"

        QTest::newRow("blank keeps all") << " \t\n" << QStringList{"0", "1", "2", "3"};
        QTest::newRow("digits: code or title") << "12" << QStringList{"0", "1"};
        QTest::newRow("padded, trimmed code") << " 0007\n" << QStringList{"0"};
        QTest::newRow("zero is no code") << "0" << QStringList{};
        QTest::newRow("typed code is title search") << "COD-0007" << QStringList{};
        QTest::newRow("too many digits") << "99999999999999999999" << QStringList{};
    }
    void matchingFilms() {
        QFETCH(QString, query);
        QFETCH(QStringList, expected);
        QCOMPARE(ids(::matchingFilms(films({"Apollo 12#7", "Tubarão#12", "Doze#3", "Sem código"}), query)), expected);
    }

    void genreParts_data() {
        QTest::addColumn<QString>("genre");
        QTest::addColumn<QStringList>("expected");

        QTest::newRow("standard spelling, duplicates")
            << "acao, Drama,  ACAO ,Cult" << QStringList{"Ação", "Drama", "Cult"};
        QTest::newRow("empty pieces") << " , ,Terror," << QStringList{"Terror"};
        QTest::newRow("two words") << "  ficcao CIENTÍFICA " << QStringList{"Ficção científica"};
    }
    void genreParts() {
        QFETCH(QString, genre);
        QFETCH(QStringList, expected);
        QCOMPARE(::genreParts(genre), expected);
    }
};

QTEST_APPLESS_MAIN(TestSearch)
#include "test_search.moc"
