#pragma once

#include <QString>

#include <optional>

namespace tarnwik::cli {

/// The user's password: asked for without echo when standard input is a terminal, else one line of standard input
/// without its line break. Nothing when there is no line, or when it is no UTF-8. A signal that ends the program while
/// it asks gives the terminal its echo back first.
std::optional<QString> readPassword();

} // namespace tarnwik::cli
