#pragma once

#include <QColor>
#include <QPalette>

class QLabel;
class QWidget;

// The text look every screen shares: colours of a role in every state, the labels'
// font and colour, and whether a widget is one where text is typed.
void setForeground(QWidget* widget, QPalette::ColorRole role, const QColor& colour);
void styleLabel(QLabel* label, qreal size);
bool isTextView(QWidget* widget);
