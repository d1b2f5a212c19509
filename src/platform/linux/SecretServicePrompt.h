#pragma once

#include "platform/linux/SecretServiceBus.h"

namespace tarnwik {

/// Has the Secret Service put a question to the person, and waits for the answer.
///
/// \a path is the prompt that the service has made for an operation; returns what the operation resulted in. Throws
/// SecretServiceError: errSecUserCanceled when the person closed the question, errSecInteractionNotAllowed when there
/// is nobody to put it to or no answer came in time, errSecNotAvailable when the service ended meanwhile.
GLibPointer<GVariant> askPerson(SecretServiceBus &bus, const char *path);

} // namespace tarnwik
