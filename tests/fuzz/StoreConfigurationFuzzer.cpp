#include "platform/AppStore.h"
#include "platform/embedded/store/StoreConfiguration.h"

#include <cstddef>
#include <cstdint>

/// Any bytes in a store configuration's file: they are read, or refused with a StoreError.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto json = QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    try {
        tarnwik::parseStoreConfiguration(json);
    } catch (const tarnwik::StoreError &) {
    }
    return 0;
}
