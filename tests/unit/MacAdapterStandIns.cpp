#include "MacAdapterStandIns.h"

#include "platform/macos/native/Application.h"
#include "platform/macos/native/MainBundle.h"
#include "platform/macos/native/StandardUserDefaults.h"

namespace tarnwik::test {

MacStandIns &MacStandIns::current()
{
    static MacStandIns standIns;
    return standIns;
}

namespace {

MacStandIns &standIns()
{
    return MacStandIns::current();
}

void recordKeychainCall(const std::string &operation, const mac::KeychainDictionary &attributes)
{
    standIns().keychainCalls.push_back({operation, attributes});
}

void recordDesktopCall(const std::string &call)
{
    standIns().desktopCalls.push_back(call);
}

} // namespace

} // namespace tarnwik::test

namespace tarnwik::mac {

PropertyValue informationDictionaryObject(const std::string &key)
{
    const auto &entries = test::standIns().informationDictionary;
    const auto entry = entries.find(key);
    return entry == entries.end() ? PropertyValue() : entry->second;
}

std::optional<std::string> userDefaultsString(const std::string &key)
{
    const auto &strings = test::standIns().userDefaults;
    const auto entry = strings.find(key);
    return entry == strings.end() ? std::nullopt : std::optional(entry->second);
}

bool setUserDefaultsString(const std::optional<std::string> &value, const std::string &key)
{
    if (!test::standIns().isDiskWritable)
        return false;
    if (value)
        test::standIns().userDefaults[key] = *value;
    else
        test::standIns().userDefaults.erase(key);
    return true;
}

std::int32_t keychainAdd(const KeychainDictionary &attributes)
{
    test::recordKeychainCall("add", attributes);
    return test::standIns().addStatus;
}

KeychainMatch keychainCopyMatching(const KeychainDictionary &query)
{
    test::recordKeychainCall("copyMatching", query);
    return test::standIns().match;
}

std::int32_t keychainDelete(const KeychainDictionary &query)
{
    test::recordKeychainCall("delete", query);
    return test::standIns().deleteStatus;
}

void setRegularActivationPolicy()
{
    test::recordDesktopCall("setRegularActivationPolicy");
}

void activateIgnoringOtherApps()
{
    test::recordDesktopCall("activateIgnoringOtherApps");
}

void terminateApplication()
{
    test::recordDesktopCall("terminate");
}

bool openURL(const std::string &url)
{
    test::recordDesktopCall("open " + url);
    return true;
}

} // namespace tarnwik::mac
