#pragma once

#include <QLineEdit>

class DOSCaret;

// A search field drawn as a text-mode cell: dark ground, one-pixel frame and a
// magnifier on the left; the text starts 30 pixels in.
class DOSSearchField : public QLineEdit {
    Q_OBJECT

public:
    explicit DOSSearchField(QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    DOSCaret* m_caret = nullptr;
};
