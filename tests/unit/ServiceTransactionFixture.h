#pragma once

#include "ServiceFixture.h"
#include "jws/SigningIdentity.h"
#include "support/SigningChain.h"

#include <QTemporaryDir>

namespace tarnwik::service {

inline qint64 days(qint64 count)
{
    return count * 24 * 60 * 60 * 1000;
}

/// A service that trusts a store of the test's own, two accounts, and a session of each.
class ServiceTransactionTest : public ServiceTest
{
protected:
    void SetUp() override
    {
        m_databasePath = m_folder.filePath(QStringLiteral("service.db"));
        m_storeRoot = [this] { return m_root; };
        addOtherAccount();
        m_seed.accounts[1].account.billingAccountToken = QStringLiteral("0C0FFEE0-0000-4000-8000-00000000000a");
        m_token = signIn();
        m_otherToken = signIn("other@tarnwik.example", "other");
    }

    qint64 now() const { return toMilliseconds(m_now); }
    QDateTime time() const { return QDateTime::fromMSecsSinceEpoch(now(), Qt::UTC); }

    /// A monthly subscription, bought now.
    TransactionPayload monthly(const QString &id = QStringLiteral("2000000000000001")) const
    {
        TransactionPayload payload = test::sampleTransaction(time());
        payload.transactionId = id;
        payload.originalTransactionId = id;
        payload.productId = QStringLiteral("tarnwik.sub.monthly");
        payload.expiresDate = now() + days(30);
        payload.appAccountToken.reset();
        return payload;
    }

    TransactionPayload yearly(const QString &id) const
    {
        TransactionPayload payload = monthly(id);
        payload.productId = QStringLiteral("tarnwik.sub.yearly");
        payload.expiresDate = now() + days(365);
        return payload;
    }

    /// The period behind that of \a last, bought now.
    TransactionPayload renewal(const TransactionPayload &last, const QString &id) const
    {
        TransactionPayload payload = last;
        payload.transactionId = id;
        payload.transactionReason = QStringLiteral("RENEWAL");
        payload.purchaseDate = last.expiresDate.value();
        payload.expiresDate = last.expiresDate.value() + days(30);
        payload.signedDate = now();
        return payload;
    }

    ServiceResponse post(const QByteArray &jws, const QByteArray &token)
    {
        return send("POST", QStringLiteral("subscription/apple/transactions"),
                    R"({"signed_transaction_jws":")" + jws + R"("})", token);
    }
    ServiceResponse post(const QByteArray &jws) { return post(jws, m_token); }
    ServiceResponse post(const TransactionPayload &payload) { return post(m_store.sign(payload)); }

    /// The account that the answer to \a payload shows, which must be accepted.
    Account accepted(const TransactionPayload &payload)
    {
        const ServiceResponse response = post(payload);
        EXPECT_EQ(outcome(response), "200 ");
        return response.status == 200 ? decode<SubscriptionResponse>(response.body).subscription : Account();
    }

    /// What both accounts look like, and what is recorded of their subscriptions.
    std::string state()
    {
        Database database(m_databasePath);
        Statement row = database.prepare(
            "SELECT (SELECT coalesce(group_concat(original_transaction_id || '>' || account_id), '')"
            " FROM subscriptions) || ';' || (SELECT coalesce(group_concat(account_id || '>' || transaction_id || '@'"
            " || bought_at), '') FROM subscription_periods)");
        row.step();
        return (send("GET", QStringLiteral("session"), {}, m_token).body
                + send("GET", QStringLiteral("session"), {}, m_otherToken).body)
                   .toStdString()
            + row.text(0).toStdString();
    }

    QTemporaryDir m_folder;
    SigningIdentity m_store = SigningIdentity::create(time());
    std::optional<QByteArray> m_root = m_store.rootCertificate();
    QByteArray m_token;
    QByteArray m_otherToken;
};

} // namespace tarnwik::service
