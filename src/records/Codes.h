#pragma once

#include "records/Records.h"

#include <optional>

QString inventoryCode(std::optional<qint64> code);             // "COD-0001"
QString filmCode(const Film& film);                            // "0001"
QString copyCode(std::optional<qint64> filmCode, qint64 copy); // "COD-0001-002"
QString customerCode(const Customer& customer);                // "0001"
QString customerCardCode(std::optional<qint64> code);          // "CLI-0001"
std::optional<qint64> numericCode(const QString& text);        // reads any of the above back

// Every film (customer) ends with a unique positive code; applying twice changes nothing.
Store assigningFilmCodes(Store store);
Store assigningCustomerCodes(Store store);
