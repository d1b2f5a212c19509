#include "ui/controls/SystemFonts.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QStringList>

#include <algorithm>

namespace tarnwik {

QString SystemFonts::textFamily()
{
    return firstInstalled({QStringLiteral("Inter")});
}

QString SystemFonts::titleFamily()
{
    return firstInstalled({QStringLiteral("Inter Display"), QStringLiteral("Inter")});
}

QString SystemFonts::firstInstalled(const QStringList &families)
{
    const auto installed =
        std::ranges::find_if(families, [](const auto &name) { return QFontDatabase::hasFamily(name); });
    return installed == families.end() ? QGuiApplication::font().family() : *installed;
}

} // namespace tarnwik
