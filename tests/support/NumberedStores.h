#pragma once

#include "records/Records.h"

#include <QString>

// Stores told apart by a number, for the tests that save many of them and then
// ask which one a file holds: store n carries n as its report baseline, its
// shop name and its records' texts, and has the given number of rentals.
Store numberedStore(int number, int rentals);

// The database files at path, gone.
void removeDatabase(const QString& path);

// A file as an earlier version left it: 4 KiB pages, previous and current saved.
bool writeSmallPageFile(const QString& path, const Store& previous, const Store& current);
