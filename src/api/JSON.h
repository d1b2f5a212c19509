#pragma once

#include "api/KeyTable.h"
#include "platform/LocalizedError.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>

namespace tarnwik {

/// A body that does not fit the record that was expected.
class DecodingError final : public LocalizedError
{
public:
    enum class Kind {
        /// A required key is not there.
        KeyNotFound,
        /// A required value is null.
        ValueNotFound,
        /// A value is of another JSON type.
        TypeMismatch,
        /// No valid JSON, or a number that the field cannot hold.
        DataCorrupted,
    };

    explicit DecodingError(Kind kind, const QString &path = {});

    Kind kind() const noexcept { return m_kind; }

    /// Where the offending value stands, in wire keys: "nodes[3].has_ipv6". For developers; never shown to users.
    const QString &path() const noexcept { return m_path; }

    /// The same error, seen from one level further out.
    DecodingError within(const QString &outer) const;

private:
    Kind m_kind;
    QString m_path;
};

/// Reads a record from UTF-8 JSON text; keys are matched in declared form after conversion from snake case, and the
/// first of several equal keys counts. Throws DecodingError.
template<Record T>
T decode(const QByteArray &bytes);

/// A record as a JSON object under its wire keys; absent fields are left out.
template<Record T>
QJsonObject toJSON(const T &record);

/// A record as compact UTF-8 JSON text.
template<Record T>
QByteArray encode(const T &record);

} // namespace tarnwik
