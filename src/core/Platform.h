#pragma once

#include <QString>

namespace tarnwik {

/// The client platforms that the service knows. Equality and hashing are those of the case.
class Platform
{
public:
    enum Case {
        ios,
        macos,
    };

    constexpr Platform(Case platform) // NOLINT(google-explicit-constructor): a case is a platform
        : m_case(platform)
    {
    }

    /// What this client reports itself as, on every system that it runs on.
    static constexpr Platform current() { return macos; }

    QString displayName() const { return m_case == ios ? QStringLiteral("iOS") : QStringLiteral("macOS"); }

    /// The value of the wire's `platform` field.
    QString apiValue() const { return m_case == ios ? QStringLiteral("ios") : QStringLiteral("macos"); }

    QString defaultDeviceName() const { return displayName() + QStringLiteral(" device"); }

    constexpr bool operator==(const Platform &) const = default;
    friend constexpr size_t qHash(Platform platform, size_t seed = 0) noexcept { return seed ^ platform.m_case; }

private:
    Case m_case;
};

} // namespace tarnwik
