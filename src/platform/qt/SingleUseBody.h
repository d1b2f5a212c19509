#pragma once

#include <QByteArray>
#include <QIODevice>

namespace tarnwik {

/// A request's body that can be read once only.
///
/// Qt's network stack sends a request again by itself when the connection is lost before the answer. It cannot when the
/// body cannot be had again, and then fails with ContentReSendError: so that what may have had its effect already does
/// not have it twice.
class SingleUseBody final : public QIODevice
{
    Q_OBJECT

public:
    explicit SingleUseBody(const QByteArray &body);

    bool isSequential() const override { return true; }
    bool atEnd() const override { return m_rest.isEmpty(); }
    bool seek(qint64) override { return false; }
    qint64 bytesAvailable() const override;

protected:
    qint64 readData(char *data, qint64 maximum) override;
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    QByteArray m_rest;
};

} // namespace tarnwik
