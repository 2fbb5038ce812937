#pragma once

#include "records/Records.h"

#include <QStringList>

// Lower case without accents ("Ação" -> "acao"): the key every case- and
// accent-blind comparison of the program uses.
QString foldedKey(const QString& text);

// The search field's text as a query: spaces and tabs trimmed from both ends.
QString searchQuery(const QString& fieldText);

// Case- and accent-blind containment; an empty query matches nothing.
bool matches(const QString& text, const QString& query);
// Trimmed query; empty keeps all; a digits-only query also matches the code.
QList<Film> matchingFilms(const QList<Film>& films, const QString& query);

QString genreKey(const QString& genre);       // "  Ficção Científica " -> "ficcao cientifica"
QStringList genreParts(const QString& genre); // distinct genres, standard spelling restored
const QStringList& standardGenres();          // the 19 genres, in display order

QList<Film> activeFilms(const Store& store);
QList<Customer> activeCustomers(const Store& store);
