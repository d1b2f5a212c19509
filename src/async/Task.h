#pragma once

#include <QCoro/QCoroTask>

#include <exception>
#include <stop_token>

namespace tarnwik {

/// What an asynchronous operation returns. It starts at once; whoever awaits it gets its value or its exception.
/// Every such operation takes a std::stop_token last. Tasks live on the thread that started them. What stands alone
/// behind co_return is moved from, be it a member: return a copy of what is to stay.
template<typename T = void>
using Task = QCoro::Task<T>;

namespace async {

/// Thrown out of a wait whose stop token was pulled.
class Cancelled final : public std::exception
{
public:
    const char *what() const noexcept override { return "cancelled"; }
};

/// Throws Cancelled if \a token was pulled.
inline void throwIfStopped(const std::stop_token &token)
{
    if (token.stop_requested())
        throw Cancelled();
}

} // namespace async
} // namespace tarnwik
