#include "ui/ByteFormatter.h"

#include "ui/UserNumberFormat.h"

#include <QLatin1String>

namespace tarnwik {

namespace {

struct Unit
{
    quint64 bytes;
    int fractionDigits;
    QLatin1String symbol;
};

constexpr Unit kilobyte{quint64(1) << 10, 0, QLatin1String("KB")};
constexpr Unit megabyte{quint64(1) << 20, 1, QLatin1String("MB")};
constexpr Unit gigabyte{quint64(1) << 30, 2, QLatin1String("GB")};

const Unit &unitOf(qint64 bytes)
{
    // Negated as an unsigned number, in which even the least qint64 has its magnitude.
    const quint64 magnitude = bytes < 0 ? quint64(0) - static_cast<quint64>(bytes) : static_cast<quint64>(bytes);
    if (magnitude < megabyte.bytes)
        return kilobyte;
    return magnitude < gigabyte.bytes ? megabyte : gigabyte;
}

std::optional<QString> number(double value, int fractionDigits)
{
    const auto format = makeUserNumberFormat(UNUM_DECIMAL);
    if (!format)
        return std::nullopt;
    format->setMinimumFractionDigits(0);
    format->setMaximumFractionDigits(fractionDigits);
    format->setRoundingMode(icu::NumberFormat::kRoundHalfEven);
    return formatted(*format, value);
}

} // namespace

QString ByteFormatter::string(qint64 bytes)
{
    if (bytes == 0)
        return QStringLiteral("Zero KB");
    const Unit &unit = unitOf(bytes);
    const double value = static_cast<double>(bytes) / static_cast<double>(unit.bytes);
    // Without ICU the amount is still worth showing, if not in the manner of the locale.
    return number(value, unit.fractionDigits).value_or(QString::number(value, 'f', unit.fractionDigits))
        + QLatin1Char(' ') + unit.symbol;
}

} // namespace tarnwik
