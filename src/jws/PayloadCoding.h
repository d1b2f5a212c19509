#pragma once

#include "jws/JSONObject.h"
#include "jws/TransactionPayload.h"

#include <optional>

namespace tarnwik {

/// Reads what encodePayload() writes. Keys that it does not know are left alone, and null stands for absent. Nothing
/// when a property that every transaction has is absent, when one is of another type, or when the identifier of a
/// transaction is no decimal number of at most 64 bits.
std::optional<TransactionPayload> decodePayload(const JSONObject &object);

} // namespace tarnwik
