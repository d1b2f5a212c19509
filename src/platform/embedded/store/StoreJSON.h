#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QString>
#include <QStringList>

#include <optional>

namespace tarnwik {

/// A value in one of the embedded store's files, which knows its place there. Whatever is not as the reader wants it is
/// refused with a StoreError that names the place, such as "products[1].id".
class StoreJSON
{
public:
    /// The object that \a json is. \a refusal begins the sentence of every error, such as "The file is refused".
    static StoreJSON parse(const QByteArray &json, const QString &refusal);

    /// Refuses an object with other keys than \a known: a slip of the pen would go unnoticed otherwise.
    void allowOnly(const QStringList &known) const;

    /// What an object must have, and what it may have.
    StoreJSON operator[](const QString &key) const;
    std::optional<StoreJSON> find(const QString &key) const;

    /// The keys of an object.
    QStringList keys() const;
    QList<StoreJSON> items() const;
    QString text() const;
    QString textThatIsNotEmpty() const;
    bool flag() const;
    /// A whole number from \a least to \a most, which double precision must hold exactly.
    qint64 integer(qint64 least, qint64 most) const;

    /// Throws; \a problem goes on from the place: "must not be empty".
    [[noreturn]] void refuse(const QString &problem) const;

private:
    StoreJSON(QJsonValue value, QString path, QString refusal);

    QJsonValue m_value;
    QString m_path;
    QString m_refusal;
};

} // namespace tarnwik
