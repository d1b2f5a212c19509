#pragma once

#include <QString>
#include <QVariant>

namespace tarnwik {

/// The program's read-only deployment settings. May be read from any thread.
class InformationDictionary
{
public:
    virtual ~InformationDictionary() = default;

    /// The value under \a key as it is now: a QString, a number or a bool; an invalid variant when there is none.
    /// Never fails: a source that cannot be read holds nothing.
    virtual QVariant object(const QString &key) const = 0;
};

} // namespace tarnwik
