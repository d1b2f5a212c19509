#include "ui/controls/IconTable.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tarnwik {

namespace {

/// The name of each icon among SF Symbols, and of its drawing.
constexpr std::array<std::pair<QLatin1StringView, QLatin1StringView>, 18> drawings{{
    {QLatin1StringView("network"), QLatin1StringView("globe")},
    {QLatin1StringView("network.slash"), QLatin1StringView("globe-off")},
    {QLatin1StringView("person.crop.circle"), QLatin1StringView("circle-user-round")},
    {QLatin1StringView("person.crop.circle.badge.exclamationmark"), QLatin1StringView("user-round-x")},
    {QLatin1StringView("gearshape"), QLatin1StringView("settings")},
    {QLatin1StringView("arrow.right.circle.fill"), QLatin1StringView("circle-arrow-right-fill")},
    {QLatin1StringView("power"), QLatin1StringView("power")},
    {QLatin1StringView("xmark.circle"), QLatin1StringView("circle-x")},
    {QLatin1StringView("checkmark.circle.fill"), QLatin1StringView("circle-check-fill")},
    {QLatin1StringView("checkmark.seal.fill"), QLatin1StringView("badge-check-fill")},
    {QLatin1StringView("slash.circle"), QLatin1StringView("ban")},
    {QLatin1StringView("circle"), QLatin1StringView("circle")},
    {QLatin1StringView("creditcard"), QLatin1StringView("credit-card")},
    {QLatin1StringView("arrow.clockwise"), QLatin1StringView("rotate-cw")},
    {QLatin1StringView("rectangle.portrait.and.arrow.right"), QLatin1StringView("log-out")},
    {QLatin1StringView("line.3.horizontal"), QLatin1StringView("menu")},
    {QLatin1StringView("checkmark"), QLatin1StringView("check")},
    {QLatin1StringView("chevron.up.chevron.down"), QLatin1StringView("chevrons-up-down")},
}};

} // namespace

std::optional<QString> iconFile(const QString &symbol)
{
    const auto drawing = std::ranges::find(drawings, symbol, &decltype(drawings)::value_type::first);
    if (drawing == drawings.end())
        return std::nullopt;
    return QStringLiteral(":/tarnwik/icons/%1.svg").arg(drawing->second);
}

} // namespace tarnwik
