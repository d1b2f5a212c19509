#pragma once

#include "async/Task.h"

#include <functional>

namespace tarnwik {

class AppModel;

namespace cli {

/// Calls \a print now, and again after each change of the tunnel's status or of the account, until \a token is pulled
/// or the session ends. \a model must outlive it.
Task<> watchChanges(AppModel &model, std::function<void()> print, std::stop_token token);

} // namespace cli
} // namespace tarnwik
