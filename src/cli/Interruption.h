#pragma once

#include <QSocketNotifier>

#include <memory>
#include <stop_token>

namespace tarnwik::cli {

/// Turns the first SIGINT or SIGTERM into a pulled stop token; a second one ends the program as usual. One lives at a
/// time, on the main thread.
class Interruption
{
public:
    Interruption();
    ~Interruption();

    Interruption(const Interruption &) = delete;
    Interruption &operator=(const Interruption &) = delete;

    std::stop_token token() const { return m_source.get_token(); }

private:
    std::stop_source m_source;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace tarnwik::cli
