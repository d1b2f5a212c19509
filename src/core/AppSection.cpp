#include "core/AppSection.h"

namespace tarnwik {

namespace {

struct Description
{
    QString rawValue;
    QString title;
    QString systemImage;
};

const Description &description(AppSection::Case section)
{
    static const std::array<Description, AppSection::allCases.size()> descriptions{{
        {QStringLiteral("connect"), QStringLiteral("Connect"), QStringLiteral("network")},
        {QStringLiteral("account"), QStringLiteral("Account"), QStringLiteral("person.crop.circle")},
        {QStringLiteral("settings"), QStringLiteral("Settings"), QStringLiteral("gearshape")},
    }};
    return descriptions[section];
}

} // namespace

std::optional<AppSection> AppSection::fromRawValue(const QString &rawValue)
{
    for (const Case section : allCases) {
        if (description(section).rawValue == rawValue)
            return section;
    }
    return std::nullopt;
}

QString AppSection::rawValue() const
{
    return description(m_case).rawValue;
}

QString AppSection::title() const
{
    return description(m_case).title;
}

QString AppSection::systemImage() const
{
    return description(m_case).systemImage;
}

} // namespace tarnwik
