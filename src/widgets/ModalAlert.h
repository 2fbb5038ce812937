#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>
#include <memory>

// What a message, question or small form holds before styledModal shows it.
struct ModalAlert {
    QString title;
    QString text;
    QStringList buttons; // in order; none means the single "OK"
    std::unique_ptr<QWidget> accessory;
    QWidget* initialFocus = nullptr; // inside the accessory
};

// A dialog ends with the first answer plus the index of its button, or with the abort answer.
inline constexpr int firstButtonAnswer = 1000;
inline constexpr int abortAnswer = -1001;
