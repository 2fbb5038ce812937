#include "widgets/WrappingSynopsisView.h"

#include "look/DOS.h"

#include <QScrollBar>
#include <QTextDocument>
#include <algorithm>

WrappingSynopsisView::WrappingSynopsisView(QWidget* parent) : QPlainTextEdit(parent) {
    setFont(DOS::font(16));
    QPalette colours = palette();
    for (auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        colours.setColor(group, QPalette::Base, DOS::ink());
        colours.setColor(group, QPalette::Text, DOS::text());
        colours.setColor(group, QPalette::Highlight, DOS::yellow());
        colours.setColor(group, QPalette::HighlightedText, DOS::ink());
    }
    setPalette(colours);
    setLineWrapMode(QPlainTextEdit::WidgetWidth);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    document()->setDocumentMargin(inset);
}

int WrappingSynopsisView::wrapWidth() const {
    return std::max(1, viewport()->width() - 2 * inset);
}
