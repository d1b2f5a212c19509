#pragma once

#include "api/AccountModels.h"

#include <QObject>
#include <QString>
#include <QVariant>

#include <optional>

namespace tarnwik {

/// An account as the screens show it. A value; the texts are those of the user's locale at the time that it was made.
class AccountPresentation
{
    Q_GADGET
    Q_PROPERTY(QString email MEMBER m_email CONSTANT)
    Q_PROPERTY(QString statusLine MEMBER m_statusLine CONSTANT)
    Q_PROPERTY(bool isServiceEnabled MEMBER m_isServiceEnabled CONSTANT)
    Q_PROPERTY(double usageFraction MEMBER m_usageFraction CONSTANT)
    Q_PROPERTY(QString usageCaption MEMBER m_usageCaption CONSTANT)
    Q_PROPERTY(QString planText MEMBER m_planText CONSTANT)
    Q_PROPERTY(QString monthlyPrice MEMBER m_monthlyPrice CONSTANT)
    Q_PROPERTY(QString billingProvider MEMBER m_billingProvider CONSTANT)
    Q_PROPERTY(QVariant billingPortalURL READ billingPortalURLVariant CONSTANT)

public:
    AccountPresentation() = default;
    explicit AccountPresentation(const Account &account);

    const QString &usageMenuText() const { return m_usageMenuText; }
    const std::optional<QString> &billingPortalURL() const { return m_billingPortalURL; }

    bool operator==(const AccountPresentation &) const = default;

private:
    QVariant billingPortalURLVariant() const;

    QString m_email;
    QString m_statusLine;
    bool m_isServiceEnabled = false;
    double m_usageFraction = 0;
    QString m_usageCaption;
    QString m_usageMenuText;
    QString m_planText;
    QString m_monthlyPrice;
    QString m_billingProvider;
    std::optional<QString> m_billingPortalURL;
};

} // namespace tarnwik
