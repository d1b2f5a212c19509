#pragma once

#include "platform/InformationDictionary.h"

namespace tarnwik {

/// The information dictionary of the main bundle, as the build filled it in.
class MacInformationDictionary final : public InformationDictionary
{
public:
    QVariant object(const QString &key) const override;
};

} // namespace tarnwik
