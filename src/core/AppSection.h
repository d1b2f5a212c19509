#pragma once

#include <QString>

#include <array>
#include <optional>

namespace tarnwik {

/// The main window's sections, in the order of the sidebar. Equality and hashing are those of the case.
class AppSection
{
public:
    enum Case {
        connect,
        account,
        settings,
    };

    static constexpr std::array<Case, 3> allCases{connect, account, settings};

    constexpr AppSection(Case section) // NOLINT(google-explicit-constructor): a case is a section
        : m_case(section)
    {
    }

    /// The section that is called \a rawValue, if any.
    static std::optional<AppSection> fromRawValue(const QString &rawValue);

    QString rawValue() const;
    QString id() const { return rawValue(); }
    QString title() const;

    /// The section's symbol, by its SF Symbols name.
    QString systemImage() const;

    constexpr Case section() const { return m_case; }
    constexpr bool operator==(const AppSection &) const = default;
    friend constexpr size_t qHash(AppSection section, size_t seed = 0) noexcept { return seed ^ section.m_case; }

private:
    Case m_case;
};

} // namespace tarnwik
