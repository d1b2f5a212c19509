#pragma once

#include "platform/KeychainQuery.h"
#include "platform/linux/SecretServicePointers.h"

namespace tarnwik {

/// What the items of this program are called by in the Secret Service: name and attributes. They are kept in clear
/// text there, and are what another program finds the items by, so they must not change.
const SecretSchema *keychainSchema();

/// The attributes that \a query names; without an access group, there is none.
GLibPointer<GHashTable> attributesOfQuery(const KeychainQuery &query);

/// Whether \a item, which a search for \a query has found, belongs to exactly the group that the query names, or to
/// none if it names none. A search alone does not tell the latter: what was not asked for matches anything.
bool isOfGroup(SecretItem *item, const KeychainQuery &query);

} // namespace tarnwik
