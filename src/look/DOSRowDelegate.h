#pragma once

#include <QStyledItemDelegate>

// Table rows in the text-mode look: navy rows with green labels; a selected row
// turns phosphor green and its labels black. Labels are cut at the tail.
class DOSRowDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    explicit DOSRowDelegate(QObject* parent = nullptr);

    // A one-pixel frame around every cell, for lists whose cells are boxed.
    bool framesCells() const { return m_framesCells; }
    void setFramesCells(bool frames) { m_framesCells = frames; }

    static QColor backgroundColor(bool selected);
    static QColor labelColor(bool selected);

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    bool m_framesCells = false;
};
