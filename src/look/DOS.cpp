#include "look/DOS.h"

#include <QFile>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QRawFont>
#include <QScreen>
#include <QtEndian>

namespace {

const QString fontResource = QStringLiteral(":/VT323-Regular.ttf");
const QString pictureResource = QStringLiteral(":/VHS-reference.png");

// The palette's single colour for every green role: one value, so text, shortcut
// and selection can never drift apart.
const QColor& phosphor() {
    static const QColor colour = QColor::fromRgbF(0.2f, 1.0f, 0.35f);
    return colour;
}

struct Registration {
    bool attempted = false;
    QString file;
    QString family;
};

Registration& registration() {
    static Registration state;
    return state;
}

QString chooseFontFile() {
    // The embedded font wins; the variable serves builds run without it.
    if (QFile::exists(fontResource))
        return fontResource;
    return qEnvironmentVariable("CINEFITA_FONT_PATH");
}

constexpr qreal enlargement = 1.45;
constexpr qreal pointsPerInch = 72.0;

// Qt turns a point size into pixels at the primary screen's logical DPI (a whole
// number); asking in points at that DPI keeps fractional pixel sizes in the request.
qreal logicalDpi() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen != nullptr ? qRound(screen->logicalDotsPerInchY()) : 96;
}

qreal pointsForPixels(qreal pixels) {
    return qMax(qreal(0.01), pixels) * pointsPerInch / logicalDpi();
}

quint16 bigEndian16(const QByteArray& data, qsizetype offset) {
    return qFromBigEndian<quint16>(reinterpret_cast<const uchar*>(data.constData()) + offset);
}

} // namespace

namespace DOS {

QColor blue() {
    static const QColor colour = QColor::fromRgbF(0.005f, 0.015f, 0.045f);
    return colour;
}

QColor ink() {
    static const QColor colour = QColor::fromRgbF(0.001f, 0.007f, 0.02f);
    return colour;
}

QColor yellow() {
    return phosphor();
}

QColor border() {
    static const QColor colour = QColor::fromRgbF(0.09f, 0.42f, 0.2f);
    return colour;
}

QColor text() {
    return phosphor();
}

QColor shortcut() {
    return phosphor();
}

QColor selection() {
    return phosphor();
}

QFont font(qreal size) {
    const Registration& state = registration();
    if (!state.family.isEmpty()) {
        QFont pixel(state.family);
        // The exact enlargement, not rounded to whole pixels, so every size keeps its
        // proportion. Antialiasing stays on: the font's thinnest details are under a
        // pixel wide at most sizes.
        pixel.setPointSizeF(pointsForPixels(size * enlargement));
        pixel.setStyleHint(QFont::TypeWriter);
        pixel.setWeight(QFont::Normal);
        return pixel;
    }
    QFont fallback = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fallback.setPointSizeF(pointsForPixels(size));
    fallback.setWeight(QFont::Normal);
    fallback.setStyle(QFont::StyleNormal);
    return fallback;
}

void registerFont() {
    Registration& state = registration();
    if (state.attempted)
        return;
    state.attempted = true;
    state.file = chooseFontFile();
    if (state.file.isEmpty())
        return;
    const int id = QFontDatabase::addApplicationFont(state.file);
    if (id < 0)
        return;
    const QStringList families = QFontDatabase::applicationFontFamilies(id);
    if (!families.isEmpty())
        state.family = families.first();
}

bool fontRegistered() {
    return !registration().family.isEmpty();
}

QString fontFile() {
    const Registration& state = registration();
    return state.attempted ? state.file : chooseFontFile();
}

QString postScriptName(const QFont& font) {
    const QByteArray table = QRawFont::fromFont(font).fontTable("name");
    if (table.size() < 6)
        return {};
    const int count = bigEndian16(table, 2);
    const int strings = bigEndian16(table, 4);
    for (int i = 0; i < count; ++i) {
        const qsizetype record = 6 + qsizetype(i) * 12;
        if (record + 12 > table.size())
            break;
        const int platform = bigEndian16(table, record);
        const int encoding = bigEndian16(table, record + 2);
        const int nameID = bigEndian16(table, record + 6);
        const int length = bigEndian16(table, record + 8);
        const qsizetype offset = strings + bigEndian16(table, record + 10);
        if (nameID != 6 || offset + length > table.size())
            continue;
        const QByteArray raw = table.mid(offset, length);
        if (platform == 3 || platform == 0) { // UTF-16 big-endian
            QString name;
            for (qsizetype k = 0; k + 1 < raw.size(); k += 2)
                name.append(QChar(bigEndian16(raw, k)));
            return name;
        }
        if (platform == 1 && encoding == 0) // Macintosh Roman; PostScript names are ASCII
            return QString::fromLatin1(raw);
    }
    return {};
}

std::optional<QImage> dialogIcon() {
    static const std::optional<QImage> icon = []() -> std::optional<QImage> {
        QImage picture(pictureResource);
        if (picture.isNull())
            return std::nullopt;
        return whiteStrokes(picture);
    }();
    return icon;
}

QImage whiteStrokes(const QImage& picture) {
    if (picture.isNull())
        return {};
    // Floating-point samples so that a component of exactly 0.75 stays 0.75.
    const QImage source = picture.convertToFormat(QImage::Format_RGBA32FPx4);
    QImage strokes(source.size(), QImage::Format_RGBA8888);
    strokes.fill(Qt::transparent);
    for (int y = 0; y < source.height(); ++y) {
        const auto* in = reinterpret_cast<const float*>(source.constScanLine(y));
        uchar* out = strokes.scanLine(y);
        for (int x = 0; x < source.width(); ++x) {
            const double brightness = (double(in[4 * x]) + double(in[4 * x + 1]) + double(in[4 * x + 2])) / 3.0;
            if (brightness >= 0.75)
                std::fill(out + 4 * x, out + 4 * x + 4, uchar(255));
        }
    }
    return strokes;
}

QImage fittedStrokes(const QImage& strokes, int side) {
    if (strokes.isNull() || side <= 0)
        return {};
    const QImage source = strokes.convertToFormat(QImage::Format_RGBA8888);
    const QSize size = source.size().scaled(side, side, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    QImage fitted(size, QImage::Format_RGBA8888);
    fitted.fill(Qt::transparent);
    // Each target pixel covers a block of source pixels (integer bounds, rounded
    // outwards); one stroke pixel in the block is enough, so no stroke is lost or greyed.
    const auto block = [](int target, int sourceLength, int targetLength) {
        const int first = int(qint64(target) * sourceLength / targetLength);
        const int end = int((qint64(target + 1) * sourceLength + targetLength - 1) / targetLength);
        return std::pair(first, qMax(end, first + 1));
    };
    for (int y = 0; y < size.height(); ++y) {
        const auto [top, bottom] = block(y, source.height(), size.height());
        uchar* out = fitted.scanLine(y);
        for (int x = 0; x < size.width(); ++x) {
            const auto [left, right] = block(x, source.width(), size.width());
            bool stroke = false;
            for (int sy = top; sy < bottom && !stroke; ++sy) {
                const uchar* in = source.constScanLine(sy);
                for (int sx = left; sx < right && !stroke; ++sx)
                    stroke = in[4 * sx + 3] != 0;
            }
            if (stroke)
                std::fill(out + 4 * x, out + 4 * x + 4, uchar(255));
        }
    }
    return fitted;
}

} // namespace DOS
