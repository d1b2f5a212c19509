#include "core/FailureText.h"

#include "api/AccountModels.h"
#include "async/Task.h"
#include "platform/HTTPSession.h"

namespace tarnwik {

std::optional<QString> failureText(const std::exception_ptr &failure, const std::stop_token &token)
{
    try {
        std::rethrow_exception(failure);
    } catch (const APIErrorEnvelope &envelope) {
        return QString(envelope.error).replace(u'_', u' ');
    } catch (const URLError &error) {
        const bool isNoNews = error.code() == URLError::Cancelled && token.stop_requested();
        return isNoNews ? std::nullopt : std::optional(error.localizedDescription());
    } catch (const async::Cancelled &) {
        return std::nullopt;
    } catch (...) {
        return localizedDescription(failure);
    }
}

} // namespace tarnwik
