#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QString>
#include <optional>

// The look every screen shares: a green-phosphor palette, the pixel font and the
// dialog icon. Views take their colours and fonts from here and nowhere else.
namespace DOS {

QColor blue();      // near-black navy: panels, rows, ordinary buttons
QColor ink();       // darkest ground: pop-ups, search field, headers, action buttons
QColor yellow();    // the phosphor green (the name is historical)
QColor border();    // frames, grid lines, dim elements
QColor text();      // same value as yellow()
QColor shortcut();  // same value as yellow()
QColor selection(); // same value as yellow()

// Sizes are nominal and count in device-independent pixels. With the pixel font
// registered the request is enlarged by 45 % (14 -> 20.3, not rounded); without it
// the system's fixed-pitch font is used at the plain size. The font carries a
// fractional point size that comes out at that many pixels on the screen (Qt 6.4's
// font loader still draws the glyphs at the nearest whole pixel size).
QFont font(qreal size);

// Registers the pixel font for this process: the embedded resource when present,
// otherwise the file named by CINEFITA_FONT_PATH. Failure is silent; font() then
// falls back. Safe to call more than once.
void registerFont();
bool fontRegistered();

// Where registerFont() takes (or took) the font file from; empty when nowhere.
QString fontFile();

// The PostScript name stored in the font file that backs the given font, read
// from its "name" table; empty when the font has none.
QString postScriptName(const QFont& font);

// White strokes on a transparent ground, from the embedded tape picture; none
// when the picture is missing or unreadable.
std::optional<QImage> dialogIcon();

// The rule behind dialogIcon(): a pixel whose mean of red, green and blue
// (0 to 1) reaches 0.75 becomes opaque white, every other pixel transparent.
// The result is RGBA8888 of the same pixel size.
QImage whiteStrokes(const QImage& picture);

// White strokes fitted into a side x side square, aspect ratio kept, staying pure
// white on transparent: a smooth scaling would grey the 1-pixel strokes or, by
// picking pixels, drop some. A target pixel is white when any pixel it covers is.
QImage fittedStrokes(const QImage& strokes, int side);

} // namespace DOS
