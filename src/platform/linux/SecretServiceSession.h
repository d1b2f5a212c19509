#pragma once

#include "platform/linux/SecretServiceBus.h"
#include "platform/linux/SecretServiceRefusal.h"

#include <QByteArray>

#include <vector>

namespace tarnwik {

/// A conversation with the Secret Service, opened for one keychain call. Everything throws SecretServiceError, and
/// blocks for no longer than the limit that the session was opened with.
class SecretServiceSession
{
public:
    using Items = std::vector<GObjectPointer<SecretItem>>;

    /// What comes of unlocking goes into \a refusal, which must outlive this: it is not tried while that remembers one.
    SecretServiceSession(std::chrono::milliseconds limit, SecretServiceRefusal &refusal);

    /// Every item with these \a attributes, in all keyrings: first those that can be read as they are, then the
    /// locked ones, as libsecret orders them. A service that hides what is locked is unlocked first.
    Items search(GHashTable *attributes);

    /// Makes sure that \a item can be read, which may mean to ask the person.
    void unlock(SecretItem *item);

    /// The data of \a item, which must be unlocked.
    QByteArray dataOf(SecretItem *item);

    void remove(SecretItem *item);

    /// Makes sure that there is a default keyring and that it is unlocked: the person is asked to choose a password for
    /// a new one, or to unlock the one there is.
    void openDefaultCollection();

    /// Stores a new item in the default keyring, which must be open.
    void create(GHashTable *attributes, const QByteArray &data);

private:
    Items itemsNow(GHashTable *attributes);
    GObjectPointer<SecretCollection> defaultCollection();
    void createDefaultCollection();
    void unlock(const char *path);

    SecretServiceLoop m_loop;
    SecretServiceBus m_bus;
    SecretServiceRefusal &m_refusal;
    GObjectPointer<SecretService> m_service;
};

} // namespace tarnwik
