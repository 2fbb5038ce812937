#include "look/DOS.h"
#include "look/DOSButton.h"
#include "look/DOSField.h"
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
#include <QtTest>

using render::count;
using render::rgb;

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

class TestControls : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        DOS::registerFont();
        QVERIFY(DOS::fontRegistered());
        QApplication::setStyle(new DOSStyle);
    }

    void buttonColoursFollowState_data() {
        QTest::addColumn<bool>("on");
        QTest::addColumn<bool>("down");
        QTest::addColumn<QColor>("fill");
        QTest::addColumn<QColor>("box"); // behind the "[F5]" of the title
        QTest::newRow("released") << false << false << DOS::blue() << DOS::blue();
        QTest::newRow("pressed") << false << true << DOS::border() << DOS::ink();
        QTest::newRow("on") << true << false << DOS::border() << DOS::ink();
    }

    void buttonColoursFollowState() {
        QFETCH(bool, on);
        QFETCH(bool, down);
        QFETCH(QColor, fill);
        QFETCH(QColor, box);
        DOSButton button("[F5] LOCADOS");
        button.resize(220, 34);
        button.setShortcutRange(std::pair(0, 4));
        button.setOn(on);
        button.setDown(down);
        const QImage image = render::of(button);
        QCOMPARE(image.pixel(3, 3), rgb(fill));
        QCOMPARE(image.pixel(219, 33), rgb(DOS::border()));
        const QRect inBox = button.shortcutBox().toAlignedRect().adjusted(1, 1, -1, -1);
        QVERIFY(count(image, inBox, rgb(box)) > inBox.width() * inBox.height() / 3);
        QVERIFY(count(image, inBox, rgb(DOS::text())) > 0); // "[F5]" itself stays green
    }

    void focusOutlineFollowsKeyboardFocus() {
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

    void searchFieldTextStartsAfterMagnifier() {
        DOSSearchField search;
        search.setText("MMMM");
        search.resize(300, 32);
        const QImage image = render::of(search);
        QVERIFY(count(image, QRect(0, 0, 26, 32), rgb(DOS::text())) > 0); // the magnifier
        const int first = columnSpan(image, QRect(26, 3, 270, 26), rgb(DOS::text())).first;
        QVERIFY2(first >= 30 && first <= 33, qPrintable(QString::number(first)));
    }

    void fieldHardEdgedWithBlockCaret() {
        DOSField field("DE VOLTA");
        field.setFont(DOS::font(16)); // as callers do; must not bring antialiasing back
        field.resize(300, 42);
        QImage image = render::of(field);
        QSet<QRgb> colours;
        for (int y = 1; y < 41; ++y)
            for (int x = 1; x < 299; ++x)
                colours.insert(image.pixel(x, y));
        QCOMPARE(colours, (QSet<QRgb>{rgb(DOS::ink()), rgb(DOS::text())}));
        QCOMPARE(image.pixel(0, 20), rgb(DOS::border()));

        const int textRight = columnSpan(image, QRect(1, 1, 298, 40), rgb(DOS::text())).second;
        field.show();
        field.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&field));
        field.setFocus();
        image = field.grab().toImage().convertToFormat(QImage::Format_ARGB32);
        // Below the baseline only the caret is lit: 3 pixels wide, just after the text.
        const auto [left, right] = columnSpan(image, QRect(1, 30, 298, 1), rgb(DOS::text()));
        QCOMPARE(right - left + 1, 3);
        QVERIFY(left > textRight - 3 && left <= textRight + 4);
        // Qt's own caret, which inverts the ground, is switched off in our fields.
        QCOMPARE(count(image, qRgb(255 - 0, 255 - 2, 255 - 5)), 0);
    }

    void tableSelection() {
        QStandardItemModel model(3, 2);
        for (int row = 0; row < 3; ++row)
            for (int column = 0; column < 2; ++column)
                model.setItem(row, column, new QStandardItem(QString("FITA %1").arg(row)));
        DOSTable table;
        table.setModel(&model);
        table.setColumnWidth(0, 120);
        table.setColumnWidth(1, 150);
        table.resize(400, 200);
        table.show();
        QVERIFY(QTest::qWaitForWindowExposed(&table));

        // A selected row shows black labels on green; deselected, green on navy.
        const auto viewport = [&] {
            return table.viewport()->grab().toImage().convertToFormat(QImage::Format_ARGB32);
        };
        const QRect row1(2, table.rowViewportPosition(1) + 1, 260, 32);
        table.selectRow(1);
        QImage image = viewport();
        QVERIFY(count(image, row1, qRgb(0, 0, 0)) > 20);
        QVERIFY(count(image, row1, rgb(DOS::selection())) > row1.width() * row1.height() / 2);
        QCOMPARE(count(image, row1, rgb(DOS::blue())), 0);
        table.clearSelection();
        image = viewport();
        QCOMPARE(count(image, row1, qRgb(0, 0, 0)), 0);
        QVERIFY(count(image, row1, rgb(DOS::text())) > 20);
        QVERIFY(count(image, row1, rgb(DOS::blue())) > row1.width() * row1.height() / 2);
    }

    void scrollKnobIsLight() {
        // As in the dialogs' long-text box: a dim knob on the dark groove is hard to find.
        QPlainTextEdit box;
        box.setPlainText(QString("LINHA\n").repeated(40));
        box.resize(300, 120);
        box.show();
        QVERIFY(QTest::qWaitForWindowExposed(&box));
        QScrollBar* bar = box.verticalScrollBar();
        QVERIFY(bar->isVisible());
        // Down the middle, between the arrow cells: the knob at the top, then the groove.
        const QImage image = render::of(*bar);
        const QRect middle(bar->width() / 2, bar->width() + 4, 1, bar->height() - 2 * bar->width() - 8);
        QVERIFY(count(image, middle, rgb(DOS::text())) >= 10);
        QVERIFY(count(image, middle, rgb(DOS::ink())) >= 10);
    }
};

QTEST_MAIN(TestControls)
#include "test_controls.moc"
