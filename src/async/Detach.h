#pragma once

#include "async/Task.h"

#include <functional>

namespace tarnwik::async {

/// Lets \a task run on without an awaiter. A cancellation ends it silently; any other failure goes to \a onFailure,
/// from the event loop, so that none is lost. Without \a onFailure the failure terminates the program: use that for
/// tasks that cannot fail.
void detach(Task<> task, std::function<void(std::exception_ptr)> onFailure = {});

} // namespace tarnwik::async
