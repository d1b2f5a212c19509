#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

namespace tarnwik {

/// The base of every error whose text is meant for the user's eyes.
class LocalizedError : public std::exception
{
public:
    explicit LocalizedError(const QString &description)
        : m_description(description)
        , m_what(description.toUtf8())
    {
    }

    /// One sentence, as the user sees it.
    const QString &localizedDescription() const noexcept { return m_description; }

    const char *what() const noexcept override { return m_what.constData(); }

private:
    QString m_description;
    QByteArray m_what;
};

/// The text of \a error for the user: its own where it has one.
QString localizedDescription(const std::exception &error);

/// The same for what was caught as anything.
QString localizedDescription(const std::exception_ptr &failure);

} // namespace tarnwik
