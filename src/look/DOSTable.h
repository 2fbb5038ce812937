#pragma once

#include <QTableView>

class DOSHeader;
class DOSRowDelegate;

// A list table in the text-mode look: DOSHeader over DOSRowDelegate rows of 34
// pixels on navy, vertical grid lines in the frame colour, whole rows selected,
// no focus rectangle.
class DOSTable : public QTableView {
    Q_OBJECT

public:
    explicit DOSTable(QWidget* parent = nullptr);

    DOSHeader* header() const { return m_header; }
    DOSRowDelegate* rowDelegate() const { return m_delegate; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    DOSHeader* m_header;
    DOSRowDelegate* m_delegate;
};
