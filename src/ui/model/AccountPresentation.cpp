#include "ui/model/AccountPresentation.h"

#include "ui/CurrencyFormatter.h"
#include "ui/model/OptionalVariant.h"
#include "ui/model/Presentation.h"

namespace tarnwik {

AccountPresentation::AccountPresentation(const Account &account)
    : m_email(account.email)
    , m_statusLine(presentation::accountStatusLine(account))
    , m_isServiceEnabled(account.serviceEnabled)
    , m_usageFraction(presentation::usageFraction(account))
    , m_usageCaption(presentation::usageCaption(account))
    , m_usageMenuText(presentation::usageMenuText(account))
    , m_planText(presentation::planText(account))
    , m_monthlyPrice(CurrencyFormatter::cents(account.monthlyPriceCents))
    , m_billingProvider(presentation::billingProviderText(account))
    , m_billingPortalURL(presentation::billingPortalURL(account))
{
}

QVariant AccountPresentation::billingPortalURLVariant() const
{
    return optionalVariant(m_billingPortalURL);
}

} // namespace tarnwik
