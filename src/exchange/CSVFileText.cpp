#include "exchange/CSVFileText.h"

#include "files/FileWriting.h"

#include <QByteArray>
#include <QDir>
#include <algorithm>
#include <array>

namespace {

// 0x80–0x9F of Windows-1252; 0 marks the five bytes the code page leaves undefined.
// The rest of the page is Latin-1.
constexpr std::array<char16_t, 32> windows1252High = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,
};

// Where a piece of bytes may end without cutting a UTF-8 sequence in two: before
// a lead byte whose sequence the piece does not hold whole.
qsizetype utf8Boundary(const QByteArray& bytes) {
    const qsizetype size = bytes.size();
    for (qsizetype back = 1; back <= std::min<qsizetype>(3, size); ++back) {
        const auto byte = static_cast<unsigned char>(bytes[size - back]);
        if ((byte & 0xC0) == 0x80)
            continue;
        if (byte >= 0xC0) {
            const qsizetype length = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : 2;
            if (length > back)
                return size - back;
        }
        break;
    }
    return size;
}

constexpr qint64 pieceSize = qint64(1) << 20;

} // namespace

namespace csv {

std::optional<QString> windows1252(QByteArrayView bytes) {
    QString text;
    text.reserve(bytes.size());
    for (const char raw : bytes) {
        const auto byte = static_cast<unsigned char>(raw);
        if (byte >= 0x80 && byte <= 0x9F) {
            const char16_t mapped = windows1252High[byte - 0x80];
            if (mapped == 0)
                return std::nullopt;
            text.append(QChar(mapped));
        } else {
            text.append(QChar(char16_t(byte)));
        }
    }
    return text;
}

QString readFailure(const QString& path, const QFile& file) {
    return QStringLiteral("Não foi possível ler o arquivo %1: %2")
        .arg(QDir::toNativeSeparators(path), file.errorString());
}

void forEachPiece(const QString& path, const std::function<void(QByteArrayView, qint64)>& use) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw FileError(readFailure(path, file));
    QByteArray buffer;
    qint64 read = 0;
    for (;;) {
        const qsizetype kept = buffer.size();
        buffer.resize(kept + pieceSize);
        const qint64 got = file.read(buffer.data() + kept, pieceSize);
        if (got < 0)
            throw FileError(readFailure(path, file));
        buffer.resize(kept + got);
        read += got;
        if (got == 0) {
            if (!buffer.isEmpty())
                use(buffer, read);
            return;
        }
        const qsizetype cut = utf8Boundary(buffer);
        use(QByteArrayView(buffer.constData(), cut), read);
        buffer.remove(0, cut);
    }
}

} // namespace csv
