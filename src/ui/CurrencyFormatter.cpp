#include "ui/CurrencyFormatter.h"

#include "ui/UserNumberFormat.h"

namespace tarnwik {

namespace {

std::optional<QString> dollars(double amount)
{
    const auto format = makeUserNumberFormat(UNUM_CURRENCY);
    if (!format)
        return std::nullopt;
    UErrorCode status = U_ZERO_ERROR;
    // Also sets two fraction digits where the locale's own currency has none.
    format->setCurrency(u"USD", status);
    if (U_FAILURE(status))
        return std::nullopt;
    return formatted(*format, amount);
}

} // namespace

QString CurrencyFormatter::cents(qint64 cents)
{
    return dollars(static_cast<double>(cents) / 100.0).value_or(QStringLiteral("$0.00"));
}

} // namespace tarnwik
