#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QWidget>

class DOSField;
class QVBoxLayout;
class WrappingSynopsisView;

// A record's fields as rows from the top: a right-aligned caption beside a field
// that fills the rest of the width. Remembers every field by key and the
// editable ones in the order added (the Tab order).
class RecordForm : public QWidget {
    Q_OBJECT

public:
    explicit RecordForm(QWidget* parent = nullptr);

    DOSField* add(const QString& key, const QString& label, const QString& value, bool editable = true);
    WrappingSynopsisView* addLong(const QString& key, const QString& label, const QString& value);

    // The text of the field with that key, trimmed; empty for an unknown key.
    QString value(const QString& key) const;

    const QMap<QString, DOSField*>& fields() const { return m_fields; }
    const QMap<QString, WrappingSynopsisView*>& longFields() const { return m_longFields; }
    const QList<QWidget*>& controls() const { return m_controls; }
    // Every field in form order, those only shown included: where Right from the menu lands.
    const QList<QWidget*>& views() const { return m_views; }

private:
    QWidget* row(const QString& label, QWidget* field, Qt::Alignment alignment);

    QVBoxLayout* m_rows;
    QMap<QString, DOSField*> m_fields;
    QMap<QString, WrappingSynopsisView*> m_longFields;
    QList<QWidget*> m_controls;
    QList<QWidget*> m_views;
};
