#pragma once

#include "platform/macos/native/Keychain.h"
#include "platform/macos/native/PropertyValue.h"

#include <map>
#include <string>
#include <vector>

namespace tarnwik::test {

/// What stands in for the frameworks behind platform/macos/native: one world for the program, which each test starts
/// afresh.
struct MacStandIns
{
    struct KeychainCall
    {
        std::string operation;
        mac::KeychainDictionary attributes;
    };

    std::map<std::string, mac::PropertyValue> informationDictionary;

    std::map<std::string, std::string> userDefaults;
    bool isDiskWritable = true;

    std::vector<KeychainCall> keychainCalls;
    std::int32_t addStatus = 0;
    std::int32_t deleteStatus = 0;
    mac::KeychainMatch match;

    /// What was asked of the application object and the workspace.
    std::vector<std::string> desktopCalls;

    static MacStandIns &current();
};

} // namespace tarnwik::test
