// Any text through the readers of typed-in values: money, dates, codes, phone
// numbers, whole numbers and label sizes. Nothing may crash; an amount stays in
// its range and a date reads back from its own text.
#include "print/Labels.h"
#include "records/Codes.h"
#include "records/DateText.h"
#include "records/IntegerText.h"
#include "records/MoneyText.h"
#include "records/PhoneText.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    if (const auto amount = cents(text); amount && (*amount < 0 || *amount > 100000000 || money(*amount).isEmpty()))
        std::abort();
    if (const auto date = parseDate(text); date && parseDate(dateText(*date)) != date)
        std::abort();
    (void)parseDateTime(text);
    (void)numericCode(text);
    (void)formatPhone(text);
    (void)wholeInteger(text);
    const qsizetype half = text.size() / 2;
    (void)chosenLabelSize(text.left(half), text.mid(half), Film{"F1", "Filme", "Drama", 2, 500, 12});
    return 0;
}
