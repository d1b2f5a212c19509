#include "async/Detach.h"

#include "async/Clock.h"

namespace tarnwik::async {

namespace {

Task<> root(Task<> task, std::function<void(std::exception_ptr)> onFailure)
{
    // A task that has ended already would otherwise report from inside detach().
    if (task.isReady())
        co_await yield();
    try {
        co_await task;
    } catch (const Cancelled &) {
        // Whoever pulled the token knows.
    } catch (...) {
        if (!onFailure)
            std::terminate();
        onFailure(std::current_exception());
    }
}

} // namespace

void detach(Task<> task, std::function<void(std::exception_ptr)> onFailure)
{
    root(std::move(task), std::move(onFailure));
}

} // namespace tarnwik::async
