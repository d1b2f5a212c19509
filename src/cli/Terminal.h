#pragma once

#include "platform/LocalizedError.h"

#include <QJsonValue>
#include <QString>

namespace tarnwik::cli {

/// Standard output takes no more: a full disk, or a reader that has gone.
class OutputError final : public LocalizedError
{
public:
    using LocalizedError::LocalizedError;
};

/// Standard output and standard error. Text goes out as UTF-8, whatever the locale.
class Terminal
{
public:
    Terminal();

    /// Prints \a text and a line break to standard output. Throws OutputError.
    void print(const QString &text) const;

    /// Prints \a value as compact JSON on a line of its own. Throws OutputError.
    void print(const QJsonValue &value) const;

    /// Prints a failure's text to standard error.
    void printError(const QString &text) const;

    /// Tells a person at a terminal what is going on; nobody else is told.
    void progress(const QString &text) const;

private:
    bool m_hasPerson;
};

/// \a text with everything that a terminal would take for more than text replaced by U+FFFD: control characters, and
/// the marks that turn the direction of writing.
QString plainText(const QString &text);

} // namespace tarnwik::cli
