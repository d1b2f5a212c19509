#pragma once

#include <QByteArray>

#include <simdjson.h>

#include <memory>
#include <optional>
#include <string_view>

namespace tarnwik {

/// A JSON object whose keys mean the same to every reader. Its values live as long as the object.
class JSONObject
{
public:
    using Value = simdjson::dom::element;

    /// Nothing when \a text is no valid JSON, no object, or gives the same key twice: of two equal keys some readers
    /// take the first and others the last.
    static std::optional<JSONObject> parse(const QByteArray &text);

    std::optional<Value> value(std::string_view key) const;

private:
    JSONObject(std::unique_ptr<simdjson::dom::parser> parser, simdjson::dom::object object);

    /// Holds what the object refers to, at a place of its own.
    std::unique_ptr<simdjson::dom::parser> m_parser;
    simdjson::dom::object m_object;
};

} // namespace tarnwik
