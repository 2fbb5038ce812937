#pragma once

#include "records/Records.h"

#include <QString>

// Printed pages live in "Impressos" inside the data folder, one file per kind
// of document (and per customer code), each new page replacing the last.
QString printFolderPath(const QString& dataFolder);

inline constexpr const char* labelsPageName = "Etiquetas-VHS";
inline constexpr const char* reportPageName = "Relatorio-Matricial";
QString memberPageName(const Customer& customer); // "Carteirinha-0012"

// Creates the print folder and writes name + ".html" atomically as UTF-8.
// Returns the file's path. Throws FileError.
QString writePrintPage(const QString& dataFolder, const QString& html, const QString& name);

// The fixed sample records of the fixture pages.
Film sampleFilm();
Customer sampleCustomer();
inline constexpr const char* sampleShopName = "CINEFITA VHS";
QString sampleLabelPage();  // labels of the sample film, default size
QString sampleMemberPage(); // card of the sample customer

// Writes "Etiquetas-exemplo.html" and "Carteirinha-exemplo.html" into folder,
// creating it first. Throws FileError.
void writeSamplePages(const QString& folder);
