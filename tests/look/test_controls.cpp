#include "look/DOS.h"
#include "look/DOSButton.h"
#include "look/DOSField.h"
#include "look/DOSHeader.h"
#include "look/DOSPopup.h"
#include "look/DOSRowDelegate.h"
#include "look/DOSSearchField.h"
#include "look/DOSStyle.h"
#include "look/DOSTable.h"
#include "look/Render.h"

#include <QApplication>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSet>
#include <QStandardItemModel>
#include <QStyleOptionSlider>
#include <QtTest>

using render::count;
using render::rgb;

class TestControls : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void pressedButtonFillsWithBorderAndInkBox();
    void fillFollowsState_data();
    void fillFollowsState();
    void focusOutlineFollowsKeyboardFocus();
    void titlePlacement();
    void titleRectNeverNegative_data();
    void titleRectNeverNegative();
    void popupArrowPointsDown();
    void searchFieldTextStartsAfterMagnifier();
    void fieldTextIsHardEdged();
    void blockCaret();
    void headerCells();
    void selectedRowTurnsLabelsBlack();
    void gridHasVerticalLinesOnly();
    void scrollKnobIsLight();
};

namespace {

// Columns holding at least one pixel of the given colour.
QPair<int, int> columnSpan(const QImage& image, const QRect& area, QRgb colour) {
    int first = -1, last = -1;
    for (int x = area.left(); x <= area.right(); ++x)
        if (count(image, QRect(x, area.top(), 1, area.height()), colour) > 0) {
            if (first < 0)
                first = x;
            last = x;
        }
    return {first, last};
}

} // namespace

void TestControls::initTestCase() {
    DOS::registerFont();
    QVERIFY(DOS::fontRegistered());
    QApplication::setStyle(new DOSStyle);
}

void TestControls::pressedButtonFillsWithBorderAndInkBox() {
    DOSButton button("[F5] LOCADOS");
    button.resize(220, 34);
    button.setShortcutRange(std::pair(0, 4));
    const QRectF box = button.shortcutBox();
    QVERIFY(box.width() > 20);
    const QRect inBox = box.toAlignedRect().adjusted(1, 1, -1, -1);
    const QRect restOfTitle(int(box.right()) + 2, inBox.top(), 60, inBox.height());

    button.setDown(true);
    QImage image = render::of(button);
    QCOMPARE(image.pixel(4, 4), rgb(DOS::border()));
    QVERIFY(count(image, inBox, rgb(DOS::ink())) > inBox.width() * inBox.height() / 3);
    QCOMPARE(count(image, inBox, rgb(DOS::border())), 0);
    QCOMPARE(count(image, restOfTitle, rgb(DOS::ink())), 0);
    QVERIFY(count(image, inBox, rgb(DOS::text())) > 0); // "[F5]" itself stays green

    button.setDown(false);
    image = render::of(button);
    QCOMPARE(image.pixel(4, 4), rgb(DOS::blue()));
    QCOMPARE(image.pixel(0, 0), rgb(DOS::border())); // the frame
    QCOMPARE(count(image, inBox, rgb(DOS::ink())), 0);
    QVERIFY(count(image, inBox, rgb(DOS::blue())) > 0);
}

void TestControls::fillFollowsState_data() {
    QTest::addColumn<bool>("on");
    QTest::addColumn<bool>("framed");
    QTest::addColumn<QColor>("normal");
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<QColor>("corner");
    QTest::newRow("plain") << false << true << DOS::blue() << DOS::blue() << DOS::border();
    QTest::newRow("on") << true << true << DOS::blue() << DOS::border() << DOS::border();
    QTest::newRow("action button") << false << true << DOS::ink() << DOS::ink() << DOS::border();
    QTest::newRow("no frame") << false << false << DOS::blue() << DOS::blue() << DOS::blue();
}

void TestControls::fillFollowsState() {
    QFETCH(bool, on);
    QFETCH(bool, framed);
    QFETCH(QColor, normal);
    QFETCH(QColor, fill);
    QFETCH(QColor, corner);
    DOSButton button("MENU PRINCIPAL");
    button.resize(220, 34);
    button.setOn(on);
    button.setDrawsDOSBorder(framed);
    button.setNormalColor(normal);
    const QImage image = render::of(button);
    QCOMPARE(image.pixel(3, 3), rgb(fill));
    QCOMPARE(image.pixel(0, 0), rgb(corner));
    QCOMPARE(image.pixel(219, 33), rgb(corner));
}

void TestControls::focusOutlineFollowsKeyboardFocus() {
    QWidget window;
    auto* plain = new DOSButton("VOLTAR", &window);
    auto* menuEntry = new DOSButton("[F1] CADASTRAR FITA", &window);
    plain->setGeometry(0, 0, 130, 34);
    menuEntry->setGeometry(0, 40, 220, 34);
    menuEntry->setShowsFocusOutline(false);
    window.show();
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));

    plain->setFocus();
    QTRY_VERIFY(plain->hasFocus());
    QCOMPARE(render::of(*plain).pixel(0, 0), rgb(DOS::yellow()));
    QCOMPARE(render::of(*plain).pixel(4, 4), rgb(DOS::blue()));

    menuEntry->setFocus();
    QTRY_VERIFY(menuEntry->hasFocus());
    QCOMPARE(render::of(*menuEntry).pixel(0, 0), rgb(DOS::border()));
    QCOMPARE(render::of(*plain).pixel(0, 0), rgb(DOS::border()));
}

void TestControls::titlePlacement() {
    DOSButton button("[ENTER] INICIAR");
    button.resize(220, 36);
    const QRect all = QRect(0, 2, 220, 32);
    const auto [left, right] = columnSpan(render::of(button), all, rgb(DOS::text()));
    QVERIFY(left >= 10 && left <= 14); // 10, plus the bearing of "["

    button.setCentersTitle(true);
    const auto [cLeft, cRight] = columnSpan(render::of(button), all, rgb(DOS::text()));
    QVERIFY2(qAbs(cLeft - (219 - cRight)) <= 2, qPrintable(QString("%1..%2").arg(cLeft).arg(cRight)));
    QCOMPARE(cRight - cLeft, right - left);
}

void TestControls::titleRectNeverNegative_data() {
    QTest::addColumn<qreal>("frameWidth");
    QTest::addColumn<bool>("centred");
    QTest::addColumn<qreal>("width");
    QTest::newRow("12 left") << 12.0 << false << 0.0;
    QTest::newRow("12 centred") << 12.0 << true << 0.0;
    QTest::newRow("19") << 19.0 << false << 0.0;
    QTest::newRow("20") << 20.0 << false << 0.0;
    QTest::newRow("21") << 21.0 << false << 1.0;
    QTest::newRow("220") << 220.0 << true << 200.0;
}

void TestControls::titleRectNeverNegative() {
    QFETCH(qreal, frameWidth);
    QFETCH(bool, centred);
    QFETCH(qreal, width);
    const QRectF frame(0, 0, frameWidth, 34);
    const QRectF title = DOSButton::titleRect(frame, QSizeF(90, 20), centred);
    QCOMPARE(title.width(), width);
    QCOMPARE(title.top(), 7.0);
    QCOMPARE(title.left(), centred ? frameWidth / 2 - 45 : 10.0);

    // Drawn that narrow, the button shows its fill and no text.
    DOSButton button("[F3] ALUGAR");
    button.setShortcutRange(std::pair(0, 4));
    button.resize(int(frameWidth), 34);
    if (width == 0)
        QCOMPARE(count(render::of(button), rgb(DOS::text())), 0);
}

void TestControls::popupArrowPointsDown() {
    DOSPopup popup;
    popup.addItem("TODOS OS GÊNEROS");
    popup.resize(260, 30);
    const QImage image = render::of(popup);
    QCOMPARE(image.pixel(5, 5), rgb(DOS::ink()));
    QCOMPARE(image.pixel(0, 0), rgb(DOS::border()));
    // Ten wide at the top (y = 12), down to a point (y = 16), 15 from the right edge.
    const auto [topLeft, topRight] = columnSpan(image, QRect(230, 12, 30, 1), rgb(DOS::text()));
    QCOMPARE(topRight - topLeft + 1, 10);
    const auto [tipLeft, tipRight] = columnSpan(image, QRect(230, 16, 30, 1), rgb(DOS::text()));
    QVERIFY(tipLeft > 0 && tipRight - tipLeft <= 2);
    QVERIFY(qAbs((tipLeft + tipRight) / 2 - (260 - 15)) <= 1);
    QVERIFY(count(image, QRect(10, 3, 200, 24), rgb(DOS::text())) > 0); // the title
}

void TestControls::searchFieldTextStartsAfterMagnifier() {
    DOSSearchField search;
    search.setText("MMMM");
    search.resize(300, 32);
    const QImage image = render::of(search);
    QCOMPARE(image.pixel(0, 0), rgb(DOS::border()));
    QCOMPARE(image.pixel(5, 5), rgb(DOS::ink()));
    // The ring fills the 11-pixel square at (9, middle - 6), the handle's top touching it.
    QRect ring;
    for (int y = 0; y <= 20; ++y)
        for (int x = 0; x < 26; ++x)
            if (image.pixel(x, y) == rgb(DOS::text()))
                ring |= QRect(x, y, 1, 1);
    QCOMPARE(ring, QRect(9, 10, 11, 11));
    // The handle runs down and to the right of the ring.
    QCOMPARE(image.pixel(21, 16 + 7), rgb(DOS::text()));
    QCOMPARE(image.pixel(21, 16 - 7), rgb(DOS::ink()));
    const auto [first, last] = columnSpan(image, QRect(26, 3, 270, 26), rgb(DOS::text()));
    QVERIFY2(first >= 30 && first <= 33, qPrintable(QString::number(first)));
    Q_UNUSED(last);
}

void TestControls::fieldTextIsHardEdged() {
    DOSField field("DE VOLTA PARA O FUTURO");
    field.setFont(DOS::font(16)); // as callers do; must not bring antialiasing back
    QVERIFY(field.font().styleStrategy() & QFont::NoAntialias);
    field.resize(400, 42);
    const QImage image = render::of(field);
    QSet<QRgb> colours;
    for (int y = 1; y < 41; ++y)
        for (int x = 1; x < 399; ++x)
            colours.insert(image.pixel(x, y));
    QCOMPARE(colours, (QSet<QRgb>{rgb(DOS::ink()), rgb(DOS::text())}));
    QCOMPARE(image.pixel(0, 20), rgb(DOS::border()));
}

void TestControls::blockCaret() {
    // Where Qt itself would put a 3-pixel caret (it inverts the ground, so it shows white).
    DOSField field("ABC");
    field.resize(200, 42);
    QLineEdit plain("ABC");
    plain.setFrame(false);
    plain.setFont(field.font());
    plain.setPalette(field.palette());
    plain.setTextMargins(field.textMargins());
    plain.resize(200, 42);

    const auto caretColumns = [](QWidget& widget, QRgb colour) {
        widget.show();
        widget.activateWindow();
        [&] {
            QVERIFY(QTest::qWaitForWindowActive(&widget));
        }();
        widget.setFocus();
        const QImage image = widget.grab().toImage().convertToFormat(QImage::Format_ARGB32);
        widget.hide();
        // Text sits higher up; the caret reaches below the baseline.
        return columnSpan(image, QRect(1, 30, 198, 1), colour);
    };
    const QRgb inverted = qRgb(255 - 0, 255 - 2, 255 - 5);
    const auto [qtLeft, qtRight] = caretColumns(plain, inverted);
    QCOMPARE(qtRight - qtLeft + 1, 3);

    const auto [left, right] = caretColumns(field, rgb(DOS::text()));
    QCOMPARE(right - left + 1, 3);
    QCOMPARE(left, qtLeft);
    // Qt's own inverted caret is switched off in our fields.
    const QImage image = field.grab().toImage().convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(count(image, inverted), 0);
}

void TestControls::headerCells() {
    QStandardItemModel model(0, 2);
    model.setHorizontalHeaderLabels({"CÓDIGO", "FILME"});
    DOSTable table;
    table.setModel(&model);
    table.setColumnWidth(0, 120);
    table.resize(400, 200);
    table.show();
    QVERIFY(QTest::qWaitForWindowExposed(&table));
    DOSHeader* header = table.header();
    QVERIFY(header->height() >= QFontMetrics(DOS::font(14)).height() + 8);
    const QImage image = render::of(*header);
    QCOMPARE(image.pixel(0, 0), rgb(DOS::border()));
    QCOMPARE(image.pixel(119, 5), rgb(DOS::border())); // end of the first section
    QCOMPARE(image.pixel(3, 3), rgb(DOS::ink()));
    const auto [first, last] = columnSpan(image, QRect(1, 1, 110, header->height() - 2), rgb(DOS::text()));
    QVERIFY(first >= 7 && first <= 9);
    Q_UNUSED(last);
}

void TestControls::selectedRowTurnsLabelsBlack() {
    QStandardItemModel model(3, 2);
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 2; ++column)
            model.setItem(row, column, new QStandardItem(QString("FITA %1").arg(row)));
    DOSTable table;
    table.setModel(&model);
    table.resize(400, 200);
    table.show();
    QVERIFY(QTest::qWaitForWindowExposed(&table));
    QCOMPARE(table.rowHeight(1), 34);
    table.setColumnWidth(0, 150);
    table.setColumnWidth(1, 150);
    const QRect row1(2, table.rowViewportPosition(1) + 1, 290, 32);
    const auto rowImage = [&] {
        return table.viewport()->grab().toImage().convertToFormat(QImage::Format_ARGB32);
    };

    table.selectRow(1);
    QImage image = rowImage();
    QVERIFY(count(image, row1, qRgb(0, 0, 0)) > 20);
    QVERIFY(count(image, row1, rgb(DOS::selection())) > row1.width() * row1.height() / 2);
    QCOMPARE(count(image, row1, rgb(DOS::blue())), 0);
    QCOMPARE(count(image, row1, rgb(DOS::text())), count(image, row1, rgb(DOS::selection()))); // same value

    table.clearSelection();
    image = rowImage();
    QCOMPARE(count(image, row1, qRgb(0, 0, 0)), 0);
    QVERIFY(count(image, row1, rgb(DOS::text())) > 20);
    QVERIFY(count(image, row1, rgb(DOS::blue())) > row1.width() * row1.height() / 2);
}

void TestControls::gridHasVerticalLinesOnly() {
    QStandardItemModel model(3, 2);
    DOSTable table;
    table.setModel(&model);
    table.setColumnWidth(0, 100);
    table.setColumnWidth(1, 100);
    table.resize(400, 200);
    table.show();
    QVERIFY(QTest::qWaitForWindowExposed(&table));
    const QImage image = table.viewport()->grab().toImage().convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(image.pixel(99, 10), rgb(DOS::border()));
    QCOMPARE(image.pixel(99, 130), rgb(DOS::border())); // down to the bottom, below the rows
    QCOMPARE(image.pixel(50, 33), rgb(DOS::blue()));    // no line between rows
    QCOMPARE(image.pixel(50, 34), rgb(DOS::blue()));
}

void TestControls::scrollKnobIsLight() {
    // As in the dialogs' long-text box: a dim knob on the dark groove is hard to find.
    QPlainTextEdit box;
    box.setPlainText(QString("LINHA\n").repeated(40));
    box.resize(300, 120);
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    QScrollBar* bar = box.verticalScrollBar();
    QVERIFY(bar->isVisible());
    QStyleOptionSlider option;
    option.initFrom(bar);
    option.orientation = Qt::Vertical;
    option.minimum = bar->minimum();
    option.maximum = bar->maximum();
    option.pageStep = bar->pageStep();
    option.sliderPosition = bar->sliderPosition();
    const QRect knob = bar->style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, bar);
    const QImage image = render::of(*bar);
    QCOMPARE(image.pixel(knob.center()), rgb(DOS::text()));
    QCOMPARE(image.pixel(knob.center().x(), knob.bottom() + 4), rgb(DOS::ink())); // the groove
}

QTEST_MAIN(TestControls)
#include "test_controls.moc"
