#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>
#include <memory>
#include <optional>

// What a message, question or small form holds before styledModal shows it.
struct ModalAlert {
    QString title;
    QString text;
    QStringList buttons; // in order; none means the single "OK"
    std::unique_ptr<QWidget> accessory;
    QWidget* initialFocus = nullptr; // inside the accessory
    // The button Escape answers where the second one would do harm (a dialog whose
    // second button writes a file); unset keeps the usual rule.
    std::optional<int> escapeButton;
};

// A dialog ends with the first answer plus the index of its button, or with the abort answer.
inline constexpr int firstButtonAnswer = 1000;
inline constexpr int abortAnswer = -1001;
