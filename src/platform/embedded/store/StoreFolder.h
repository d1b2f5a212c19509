#pragma once

#include "jws/SignedTransaction.h"
#include "jws/SigningIdentity.h"
#include "platform/embedded/store/StoreConfiguration.h"
#include "platform/embedded/store/StoreRecords.h"
#include "platform/embedded/store/StoreWallClock.h"

#include <QDateTime>
#include <QLockFile>

namespace tarnwik {

/// The store's files cannot be changed now: another program does, or the folder does not let us.
class StoreLockError final : public StoreError
{
    using StoreError::StoreError;
};

/// The files of the embedded store, which several programs share.
///
/// Reading needs no lock: each file is always a whole one. A file whose content is broken is renamed, and the operation
/// that found it throws a StoreError that tells both names; the next one finds no file and starts afresh. A file that
/// cannot be read at all is left alone, with an error each time.
class StoreFolder
{
public:
    StoreFolder(const QString &path, StoreWallClock wallClock);

    const QString &path() const { return m_path; }
    QDateTime now() const;

    /// What the store sells and does, as the file says now.
    StoreConfiguration configuration() const;

    /// What was bought.
    StoreRecords records() const;

    /// Whom transactions must lead to, at this moment. Makes the store's identity when there is none.
    TransactionTrust trust() const;

private:
    friend class LockedStore;

    QString file(const char *name) const;

    QString m_path;
    StoreWallClock m_wallClock;
};

/// The same files, while no other program changes them.
class LockedStore
{
public:
    /// Waits for other programs at most five seconds; makes the folder when there is none. Throws StoreError.
    explicit LockedStore(const StoreFolder &folder);

    StoreRecords records() const;
    /// The same, but leaves a broken file where it is, for an operation that can tell the user.
    StoreRecords recordsIfIntact() const;
    void write(const StoreRecords &records);

    /// The identity that the store signs with, made when there is none. One that proves broken is renamed like any other
    /// file; what the next one signs leads to another root, and all that was signed before is unverified from then on.
    SigningIdentity identity();

private:
    const StoreFolder &m_folder;
    QLockFile m_lock;
};

} // namespace tarnwik
