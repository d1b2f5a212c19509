#pragma once

#include "platform/LocalizedError.h"

namespace tarnwik {

/// The application model's own errors.
class AppModelError final : public LocalizedError
{
public:
    enum class Case {
        NoNodeAvailable,
    };

    static AppModelError noNodeAvailable()
    {
        return {Case::NoNodeAvailable, QStringLiteral("No exit nodes are available.")};
    }

    Case errorCase() const noexcept { return m_case; }

private:
    AppModelError(Case errorCase, const QString &description)
        : LocalizedError(description)
        , m_case(errorCase)
    {
    }

    Case m_case;
};

} // namespace tarnwik
