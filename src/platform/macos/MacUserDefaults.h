#pragma once

#include "platform/UserDefaults.h"

namespace tarnwik {

/// The standard user defaults, in the preferences of the main bundle.
class MacUserDefaults final : public UserDefaults
{
public:
    std::optional<QString> string(const QString &key) const override;
    void setString(const QString &value, const QString &key) override;
    void removeObject(const QString &key) override;
};

} // namespace tarnwik
