#pragma once

#include "async/Task.h"

#include <QCoro/QCoroAsyncGenerator>

namespace tarnwik {

/// A sequence whose elements come in their own time. It starts when its first element is asked for, and must not be
/// destroyed while one is awaited: what ends the wait early is the stop token that it was made with.
template<typename T>
using AsyncGenerator = QCoro::AsyncGenerator<T>;

} // namespace tarnwik
