#include "records/Records.h"

#include <QUuid>

QString newIdentifier() {
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
}
