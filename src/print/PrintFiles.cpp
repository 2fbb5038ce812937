#include "print/PrintFiles.h"

#include "files/FileWriting.h"
#include "print/Labels.h"
#include "print/MemberCard.h"

#include <QDir>

QString printFolderPath(const QString& dataFolder) {
    return QDir(dataFolder).filePath(QStringLiteral("Impressos"));
}

QString memberPageName(const Customer& customer) {
    return QStringLiteral("Carteirinha-") +
           QString::asprintf("%04lld", static_cast<long long>(customer.code.value_or(0)));
}

QString writePrintPage(const QString& dataFolder, const QString& html, const QString& name) {
    const QString folder = printFolderPath(dataFolder);
    createFolder(folder);
    const QString path = QDir(folder).filePath(name + QStringLiteral(".html"));
    writeFileAtomically(path, html.toUtf8());
    return path;
}

Film sampleFilm() {
    Film film;
    film.id = QStringLiteral("sample");
    film.title = QStringLiteral("DE VOLTA PARA O FUTURO");
    film.genre = QStringLiteral("Ficção científica");
    film.copies = 2;
    film.price = 500;
    film.code = 1;
    film.year = 1985;
    film.originalTitle = QStringLiteral("BACK TO THE FUTURE");
    film.release = false;
    return film;
}

Customer sampleCustomer() {
    Customer customer;
    customer.id = QStringLiteral("sample-c");
    customer.name = QStringLiteral("SÓCIO DE EXEMPLO");
    customer.phone = QStringLiteral("(11) 999999999");
    customer.code = 1;
    return customer;
}

QString sampleLabelPage() {
    return labelDocument({sampleFilm()}, QString::fromUtf8(sampleShopName));
}

QString sampleMemberPage() {
    return memberDocument({sampleCustomer()}, QString::fromUtf8(sampleShopName));
}

void writeSamplePages(const QString& folder) {
    createFolder(folder);
    const QDir dir(folder);
    writeFileAtomically(dir.filePath(QStringLiteral("Etiquetas-exemplo.html")), sampleLabelPage().toUtf8());
    writeFileAtomically(dir.filePath(QStringLiteral("Carteirinha-exemplo.html")), sampleMemberPage().toUtf8());
}
