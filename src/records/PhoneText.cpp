#include "records/PhoneText.h"

QString formatPhone(const QString& text) {
    QString digits;
    for (const QChar c : text) {
        if (c >= u'0' && c <= u'9' && digits.size() < 11)
            digits.append(c);
    }
    if (digits.size() <= 1)
        return digits.isEmpty() ? QString() : u'(' + digits;
    QString phone = u'(' + digits.left(2) + u')';
    if (digits.size() > 2)
        phone += u' ' + digits.mid(2);
    return phone;
}
