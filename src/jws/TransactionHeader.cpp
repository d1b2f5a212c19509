#include "jws/TransactionHeader.h"

#include "jws/CompactJWS.h"
#include "jws/JSONObject.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace tarnwik {

namespace {

constexpr std::string_view algorithm = "ES256";

bool isUsable(const JSONObject &object)
{
    const auto named = object.value("alg");
    std::string_view name;
    return named && !named->get(name) && name == algorithm && !object.value("crit");
}

} // namespace

QByteArray encodeHeader(const TransactionHeader &header)
{
    QJsonArray certificates;
    for (const QByteArray &certificate : header.certificates)
        certificates.append(QString::fromLatin1(certificate.toBase64()));
    const QJsonObject object{
        {QStringLiteral("alg"), QLatin1String(algorithm.data(), qsizetype(algorithm.size()))},
        {QStringLiteral("x5c"), certificates},
    };
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<TransactionHeader> decodeHeader(const QByteArray &text)
{
    const auto object = JSONObject::parse(text);
    if (!object || !isUsable(*object))
        return std::nullopt;
    const auto list = object->value("x5c");
    simdjson::dom::array entries;
    if (!list || list->get(entries))
        return std::nullopt;

    TransactionHeader header;
    for (const auto entry : entries) {
        std::string_view base64;
        if (entry.get(base64))
            return std::nullopt;
        const auto certificate = decodeBase64(QByteArray(base64.data(), qsizetype(base64.size())));
        if (!certificate)
            return std::nullopt;
        header.certificates.append(*certificate);
    }
    return header;
}

} // namespace tarnwik
