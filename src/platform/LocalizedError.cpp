#include "platform/LocalizedError.h"

namespace tarnwik {

QString localizedDescription(const std::exception &error)
{
    if (const auto *localized = dynamic_cast<const LocalizedError *>(&error))
        return localized->localizedDescription();
    return QString::fromUtf8(error.what());
}

QString localizedDescription(const std::exception_ptr &failure)
{
    try {
        std::rethrow_exception(failure);
    } catch (const std::exception &error) {
        return localizedDescription(error);
    } catch (...) {
        return QStringLiteral("The operation couldn’t be completed.");
    }
}

} // namespace tarnwik
