#pragma once

#include <QPlainTextEdit>

// A multi-line text view whose text always wraps at the visible width, never
// scrolling sideways: the long-text box of the dialogs and the synopsis of the
// film form. Pixel font, green on the darkest ground, 6-pixel text inset.
class WrappingSynopsisView : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit WrappingSynopsisView(QWidget* parent = nullptr);

    static constexpr int inset = 6;

    // The width the text wraps at: the visible width less the inset on both sides, at least 1.
    int wrapWidth() const;
};
