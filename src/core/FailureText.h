#pragma once

#include <QString>

#include <exception>
#include <optional>
#include <stop_token>

namespace tarnwik {

/// How the user is told of \a failure: a server's error by its code in words, all else by its description. Nothing for
/// one that is no news: the end of an operation that \a token stopped.
std::optional<QString> failureText(const std::exception_ptr &failure, const std::stop_token &token = {});

} // namespace tarnwik
