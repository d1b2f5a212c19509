#pragma once

#include <QByteArray>

#include <optional>

namespace tarnwik {

/// The three parts of a signed text in compact form (RFC 7515, section 7.1), still in base64url.
struct CompactJWS
{
    QByteArray header;
    QByteArray payload;
    QByteArray signature;

    /// What the signature is made over.
    QByteArray signingInput() const { return header + '.' + payload; }
};

/// Nothing when \a text has more or fewer than three parts, or more than 64 KiB. The parts may be anything.
std::optional<CompactJWS> splitCompactJWS(const QByteArray &text);

QByteArray encodeBase64URL(const QByteArray &bytes);

/// Reads \a text only in the one form that encodeBase64URL() gives: without padding, blanks and stray bits.
std::optional<QByteArray> decodeBase64URL(const QByteArray &text);

/// Reads \a text only in the one form that base64 has: with padding, without blanks and stray bits.
std::optional<QByteArray> decodeBase64(const QByteArray &text);

} // namespace tarnwik
