#pragma once

#include "async/Task.h"

#include <functional>
#include <utility>

namespace tarnwik::async {

/// A task that runs beside its parent, with a stop token of its own that the parent's token pulls too.
///
/// What one child's failure does to the others is the parent's choice: it calls stop(). A child must be awaited, by
/// result() or by settle(), before it is destroyed.
template<typename T>
class Child
{
public:
    /// Starts \a operation with the child's token.
    template<typename Operation>
    Child(const std::stop_token &parent, Operation operation)
        : m_link(parent, [source = m_source]() mutable { source.request_stop(); })
        , m_task(operation(m_source.get_token()))
    {
    }

    Child(const Child &) = delete;
    Child &operator=(const Child &) = delete;

    void stop() { m_source.request_stop(); }

    /// Waits for the child and gives its value, or throws what it threw.
    Task<T> result() { co_return co_await std::move(m_task); }

    /// Waits for the child and drops what came of it: for a parent that has a failure of its own to report.
    Task<> settle()
    {
        try {
            co_await m_task;
        } catch (...) {
        }
    }

private:
    std::stop_source m_source;
    std::stop_callback<std::function<void()>> m_link;
    Task<T> m_task;
};

} // namespace tarnwik::async
