#pragma once

#include <QString>

#include <optional>

namespace tarnwik {

/// A URL as the platform understands one: any text that RFC 3986 allows once what it forbids in user, password, path,
/// query and fragment is percent-encoded and the host is written in its ASCII form. Neither scheme nor host need be
/// there, and a URL that was valid as it stood keeps its text to the letter. A value; cheap to copy.
class URL
{
public:
    /// The URL that \a text spells, or nothing if there is none. Nothing is trimmed.
    static std::optional<URL> fromString(const QString &text);

    /// This URL with \a path as further path components. Exactly one "/" stands between the two; query and fragment
    /// stay at the end. \a path is taken as plain text: all that a path may not hold is percent-encoded, "%" included.
    URL appendingPath(const QString &path) const;

    /// The whole text, percent-encoded: ASCII only.
    const QString &absoluteString() const noexcept { return m_text; }

    bool operator==(const URL &) const = default;

private:
    explicit URL(const QString &text)
        : m_text(text)
    {
    }

    QString m_text;
};

} // namespace tarnwik
