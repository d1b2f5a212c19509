#pragma once

#include "async/Task.h"

#include <QPointer>

namespace tarnwik::async {

/// Stands in a coroutine that works on a QObject, to be asked after every wait whether that object still lives.
class OwnerGuard
{
public:
    explicit OwnerGuard(const QObject *owner)
        : m_owner(owner)
    {
    }

    bool isAlive() const { return !m_owner.isNull(); }

    /// Throws Cancelled when the owner is gone: there is nobody left to work for.
    void check() const
    {
        if (!isAlive())
            throw Cancelled();
    }

private:
    QPointer<const QObject> m_owner;
};

} // namespace tarnwik::async
