#include "platform/macos/MacInformationDictionary.h"

#include "platform/macos/MacPropertyValue.h"
#include "platform/macos/native/MainBundle.h"

namespace tarnwik {

QVariant MacInformationDictionary::object(const QString &key) const
{
    return variantFromPropertyValue(mac::informationDictionaryObject(key.toStdString()));
}

} // namespace tarnwik
