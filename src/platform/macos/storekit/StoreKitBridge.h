#pragma once

// The App Store's Swift interface as C sees it: StoreKitBridge.swift defines these functions. Plain C, so that both
// sides can be held against it.

#include <stddef.h> // NOLINT(modernize-deprecated-headers): also read as C
#include <stdint.h> // NOLINT(modernize-deprecated-headers): also read as C

#ifdef __cplusplus
extern "C" {
#endif

// All text is UTF-8. Every function may be called from any thread, copies its arguments, and returns without waiting.
//
// A question is answered by exactly one call of its store_reply, from any thread, and possibly before the function that
// asked has returned. `context` is handed back as it came. The reply is a JSON object that lives only during the call:
//
//   a failure          {"error": ERROR}, whatever was asked
//   store_products     {"products": [{"id": TEXT, "displayPrice": TEXT}…]}
//   store_purchase     {"outcome": "success", "transaction": TRANSACTION}, or an outcome alone: "pending", "cancelled",
//                      "missingProduct" for a product that the store does not have, or a word for a kind that the
//                      bridge does not know
//   store_entitlements {"transactions": [TRANSACTION…]}
//   store_finish       {}
//   store_sync         {}
//
// ERROR is {"type": TEXT, "case": TEXT, "message": TEXT}: the Swift type without its module, the name of its case, and
// what the platform says of it to the user. Only the first two are the same in every release.
//
// TRANSACTION is {"jws": TEXT, "id": TEXT, "productId": TEXT}, an unsigned 64-bit number as decimal text being the id;
// with "revocationDate", in seconds since 1970, when the store took the purchase back; and with
// "verificationError": ERROR when the platform did not find the signature good.
//
// An absent value has no key.

/// Receives the answer to one question.
typedef void (*store_reply)(void *context, const char *json); // NOLINT(modernize-use-using)

/// Receives one TRANSACTION at a time.
typedef void (*store_event)(void *context, const char *json); // NOLINT(modernize-use-using)

/// Looks up the `count` products called `ids`. What the store does not have is left out.
void store_products(const char *const *ids, size_t count, void *context, store_reply reply);

/// Lets the user buy a product. `account_uuid` ties the purchase to an account of the service; it may be null.
void store_purchase(const char *product_id, const char *account_uuid, void *context, store_reply reply);

/// Reads the latest transaction of every product that the user is entitled to.
void store_entitlements(void *context, store_reply reply);

/// Begins to report the transactions that come by other ways than store_purchase(), from one thread at a time. Ends with
/// store_updates_stop(), which takes what this returns.
void *store_updates_start(void *context, store_event event);

/// Ends what store_updates_start() began, once. Waits for an event that is being reported: no event is reported after
/// this has returned, and `context` is not touched any more. Not to be called from within an event.
void store_updates_stop(void *handle);

/// Tells the store that a transaction was dealt with. One that the store does not know is left alone.
void store_finish(uint64_t transaction_id, void *context, store_reply reply);

/// Brings the user's transactions up to date with the store's. May ask the user to sign in there.
void store_sync(void *context, store_reply reply);

#ifdef __cplusplus
}
#endif
