#pragma once

#include "platform/LocalizedError.h"

#include <QString>

namespace tarnwik::cli {

/// There is no password to be had.
class PasswordError final : public LocalizedError
{
public:
    using LocalizedError::LocalizedError;
};

/// The user's password: asked for without echo when standard input is a terminal, else one line of standard input
/// without its line break. Throws PasswordError when there is no line, when it is no UTF-8, and when it is longer than
/// 4096 bytes. A signal that ends the program while it asks gives the terminal its echo back first.
QString readPassword();

} // namespace tarnwik::cli
