#pragma once

#include <QByteArray>
#include <QList>

#include <optional>

namespace tarnwik {

/// What the header of a signed transaction tells: who vouches for the signature. DER, the signer's certificate first,
/// nothing of it checked.
struct TransactionHeader
{
    QList<QByteArray> certificates;
};

/// The header in JSON, the algorithm named as ES256.
QByteArray encodeHeader(const TransactionHeader &header);

/// Nothing when \a text is no such header: no JSON object, another algorithm than ES256 or none, extensions that must be
/// understood (`crit`), an `x5c` that is no list of texts in base64.
std::optional<TransactionHeader> decodeHeader(const QByteArray &text);

} // namespace tarnwik
