#pragma once

#include "api/AccountModels.h"
#include "service/Database.h"
#include "service/Time.h"

namespace tarnwik::service {

/// What a sign-in is checked against.
struct Login
{
    /// Nothing for an address that no account has.
    std::optional<qint64> accountId;
    /// The account's, or one that no password fits.
    QString passwordHash;
};

/// The login for \a email, whatever its letters' case.
Login findLogin(Database &database, const QString &email);

/// The account of \a id, which must exist.
Account readAccount(Database &database, qint64 id);

/// Records a session that starts at \a now and is known by \a token.
void insertSession(Database &database, qint64 accountId, const QByteArray &token, const QString &deviceName,
                   const QString &platform, Moment now);

/// The account whose live session has \a token.
std::optional<qint64> findSession(Database &database, const QByteArray &token);

/// Ends the session of \a token.
void removeSession(Database &database, const QByteArray &token);

/// How long it takes until \a email may be tried again after too many failures; nothing if it may be at \a now.
std::optional<std::chrono::seconds> signInDelay(Database &database, const QString &email, Moment now);

/// Remembers a wrong password for \a email at \a now, for as long as it matters.
void recordFailedSignIn(Database &database, const QString &email, Moment now);

/// Forgets the wrong passwords for \a email.
void forgetFailedSignIns(Database &database, const QString &email);

} // namespace tarnwik::service
