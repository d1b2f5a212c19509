#pragma once

#include <QString>

namespace tarnwik::service {

/// Whether \a text has the form of an e-mail address: one "@", something before it, a host name behind it, no blanks and
/// no control characters, 254 bytes at most.
bool isEmailAddress(const QString &text);

/// Whether \a text is fit to be shown as a name: 1 to 128 characters, none of them a control character, and not only
/// blanks.
bool isDisplayName(const QString &text);

/// Whether \a text has 1 to 1024 bytes.
bool isPassword(const QString &text);

/// Whether \a text is a platform that the clients run on: "ios" or "macos".
bool isPlatform(const QString &text);

/// Whether \a text is "host:port", with an IPv6 address in brackets.
bool isEndpoint(const QString &text);

/// Whether \a text has the form of a signed transaction: three parts in base64url without padding, joined by ".", of
/// which the first two hold JSON objects and none is empty. Says nothing about who signed it.
bool isCompactJWS(const QString &text);

} // namespace tarnwik::service
