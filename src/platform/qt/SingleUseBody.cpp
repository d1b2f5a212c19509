#include "platform/qt/SingleUseBody.h"

#include <algorithm>

namespace tarnwik {

SingleUseBody::SingleUseBody(const QByteArray &body)
    : m_rest(body)
{
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

qint64 SingleUseBody::bytesAvailable() const
{
    return m_rest.size() + QIODevice::bytesAvailable();
}

qint64 SingleUseBody::readData(char *data, qint64 maximum)
{
    if (m_rest.isEmpty())
        return -1;
    const auto size = std::min<qint64>(maximum, m_rest.size());
    std::copy_n(m_rest.constData(), size, data);
    m_rest.remove(0, size);
    return size;
}

} // namespace tarnwik
