#include "api/JSON.h"

namespace tarnwik {

namespace {

/// The platform's English texts, which never name the field.
QString text(DecodingError::Kind kind)
{
    switch (kind) {
    case DecodingError::Kind::KeyNotFound:
    case DecodingError::Kind::ValueNotFound:
        return QStringLiteral("The data couldn’t be read because it is missing.");
    case DecodingError::Kind::TypeMismatch:
    case DecodingError::Kind::DataCorrupted:
        break;
    }
    return QStringLiteral("The data couldn’t be read because it isn’t in the correct format.");
}

} // namespace

DecodingError::DecodingError(Kind kind, const QString &path)
    : LocalizedError(text(kind))
    , m_kind(kind)
    , m_path(path)
{
}

DecodingError DecodingError::within(const QString &outer) const
{
    const bool needsDot = !m_path.isEmpty() && !m_path.startsWith(u'[');
    return DecodingError(m_kind, needsDot ? QString(outer + u'.' + m_path) : QString(outer + m_path));
}

} // namespace tarnwik
