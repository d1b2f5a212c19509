#include "jws/JSONObject.h"

#include <algorithm>
#include <vector>

namespace tarnwik {

namespace {

bool hasRepeatedKeys(const simdjson::dom::object &object)
{
    std::vector<std::string_view> keys;
    for (const auto &field : object)
        keys.push_back(field.key);
    std::sort(keys.begin(), keys.end());
    return std::adjacent_find(keys.begin(), keys.end()) != keys.end();
}

} // namespace

JSONObject::JSONObject(std::unique_ptr<simdjson::dom::parser> parser, simdjson::dom::object object)
    : m_parser(std::move(parser))
    , m_object(object)
{
}

std::optional<JSONObject> JSONObject::parse(const QByteArray &text)
{
    // Headers and payloads are flat but for a list: what is deeper was made to do harm.
    constexpr std::size_t deepest = 32;
    auto parser = std::make_unique<simdjson::dom::parser>();
    simdjson::dom::object object;
    const auto size = std::size_t(text.size());
    if (text.isEmpty() || parser->allocate(size, deepest) || parser->parse(text.constData(), size).get(object)
        || hasRepeatedKeys(object))
        return std::nullopt;
    return JSONObject(std::move(parser), object);
}

std::optional<JSONObject::Value> JSONObject::value(std::string_view key) const
{
    Value found;
    if (m_object.at_key(key).get(found))
        return std::nullopt;
    return found;
}

} // namespace tarnwik
