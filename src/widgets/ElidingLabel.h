#pragma once

#include <QLabel>

// A one-line label that cuts its text at the tail, with "…", when the row it
// sits in is narrower than the text.
class ElidingLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidingLabel(QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;
    QString shownText() const; // the text as drawn at the current width

protected:
    void paintEvent(QPaintEvent* event) override;
};
