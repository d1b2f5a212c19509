#include "jws/CompactJWS.h"

namespace tarnwik {

namespace {

constexpr QByteArray::Base64Options urlForm = QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals;
constexpr QByteArray::Base64Options plainForm = QByteArray::Base64Encoding;

/// What was written otherwise than we would write it is refused: two texts must not spell the same bytes, or a changed
/// text could pass for the signed one.
std::optional<QByteArray> decodeExactly(const QByteArray &text, QByteArray::Base64Options form)
{
    const auto result = QByteArray::fromBase64Encoding(text, form | QByteArray::AbortOnBase64DecodingErrors);
    if (!result || result.decoded.toBase64(form) != text)
        return std::nullopt;
    return result.decoded;
}

} // namespace

std::optional<CompactJWS> splitCompactJWS(const QByteArray &text)
{
    constexpr qsizetype longest = 65'536;
    if (text.size() > longest || text.count('.') != 2)
        return std::nullopt;
    const qsizetype first = text.indexOf('.');
    const qsizetype second = text.indexOf('.', first + 1);
    return CompactJWS{text.first(first), text.sliced(first + 1, second - first - 1), text.sliced(second + 1)};
}

QByteArray encodeBase64URL(const QByteArray &bytes)
{
    return bytes.toBase64(urlForm);
}

std::optional<QByteArray> decodeBase64URL(const QByteArray &text)
{
    return decodeExactly(text, urlForm);
}

std::optional<QByteArray> decodeBase64(const QByteArray &text)
{
    return decodeExactly(text, plainForm);
}

} // namespace tarnwik
