#pragma once

#include "platform/HTTPSession.h"

#include <QUrl>

#include <optional>

namespace tarnwik {

/// Whether \a url lies on this very machine, so that clear text towards it crosses no network: "localhost", 127.0.0.0/8
/// or ::1. Not the names below "localhost": many machines ask the network for these.
bool isLoopback(const QUrl &url);

/// \a url as something that HTTP can be sent to. Throws URLError: UnsupportedURL for what is no http or https URL with
/// a host, AppTransportSecurityRequiresSecureConnection for clear text that would leave the machine.
QUrl sendableURL(const URL &url);

/// Whether \a value is one header's value and no more: a line break would begin another header. A header of any other
/// value is not sent, so that a server's odd token ends in that server's refusal.
bool isHeaderValue(const QByteArray &value);

/// Where a request to \a url is sent next after an answer of \a statusCode that points to \a location, or nothing if
/// the answer is no redirect, or leads to another origin: what a request carries is for its own origin only.
std::optional<QUrl> redirectTarget(const QUrl &url, int statusCode, const QByteArray &location);

/// \a request as it is to be sent after a redirect of \a statusCode: where the method becomes GET, the body and its
/// description are dropped.
HTTPRequest redirected(HTTPRequest request, int statusCode);

} // namespace tarnwik
