#pragma once

#include "records/FilmCSVError.h"
#include "records/Records.h"

#include <QMap>
#include <QString>
#include <exception>
#include <optional>

// The trimmed texts of a record form, by field key.
using FormValues = QMap<QString, QString>;

// A save the form cannot make; title and text are the dialog the operator sees.
using RecordRefusal = FilmCSVError;

// Characters as the operator sees them (grapheme clusters): an accent typed apart
// still makes one. The one length rule of the state, the shop's name and the dialogs.
qsizetype visibleLength(const QString& text);

// The code a new record is offered: one past the highest in the store, removed records included.
qint64 nextFilmCode(const Store& store);
qint64 nextCustomerCode(const Store& store);

// The store with the film (customer) of the form saved: replaced in place when
// editID names one, appended otherwise. Throws RecordRefusal at the first check
// that fails, in the order the operator is told about them.
Store savingFilm(const Store& store, const FormValues& values, const std::optional<QString>& editID);
Store savingCustomer(const Store& store, const FormValues& values, const std::optional<QString>& editID);

// The store with that record's removal mark set or cleared.
Store markingFilmDeleted(Store store, const QString& id, bool deleted);
Store markingCustomerDeleted(Store store, const QString& id, bool deleted);
