#include "ServiceProcess.h"
#include "jws/SigningIdentity.h"
#include "support/SigningChain.h"

#include <QDateTime>
#include <QFile>

namespace tarnwik::service {
namespace {

/// App Store transactions as the program itself takes them in, over HTTP and on its own clock.
class ServiceProgramTransaction : public testing::Test
{
protected:
    QStringList arguments() const
    {
        return {QStringLiteral("--store-root"), m_rootPath, QStringLiteral("--database"),
                m_folder.filePath(QStringLiteral("service.db"))};
    }

    void writeRoot(const QByteArray &pem) const
    {
        QFile file(m_rootPath);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(pem), pem.size());
    }

    static TransactionPayload monthly()
    {
        TransactionPayload payload = test::sampleTransaction(QDateTime::currentDateTimeUtc());
        payload.productId = QStringLiteral("tarnwik.sub.monthly");
        payload.appAccountToken.reset();
        return payload;
    }

    static ServiceProcess::Answer post(ServiceProcess &service, const QByteArray &jws, const QByteArray &token)
    {
        return service.send("POST", QStringLiteral("/api/customer/v1/subscription/apple/transactions"),
                            R"({"signed_transaction_jws":")" + jws + R"("})", token);
    }

    static std::string outcome(const ServiceProcess::Answer &answer)
    {
        return std::to_string(answer.status) + ' ' + answer.body.value(QLatin1String("error")).toString().toStdString();
    }

    static QJsonObject account(ServiceProcess &service, const QByteArray &token)
    {
        return service.send("GET", QStringLiteral("/api/customer/v1/session"), {}, token)
            .body.value(QLatin1String("account"))
            .toObject();
    }

    QTemporaryDir m_folder;
    QString m_rootPath = m_folder.filePath(QStringLiteral("root.pem"));
    SigningIdentity m_store = SigningIdentity::create(QDateTime::currentDateTimeUtc());
};

TEST_F(ServiceProgramTransaction, givesThePlanAndSurvivesARestart)
{
    writeRoot(m_store.rootCertificate());
    const QByteArray jws = m_store.sign(monthly());
    QByteArray token;
    QJsonObject subscribed;
    {
        ServiceProcess service(arguments());
        service.waitForOrigin();
        token = service.signIn();
        EXPECT_EQ(account(service, token).value(QLatin1String("plan_gb")).toInt(), 200);
        const auto answer = post(service, jws, token);
        ASSERT_EQ(outcome(answer), "200 ");
        subscribed = answer.body.value(QLatin1String("subscription")).toObject();
        EXPECT_EQ(subscribed.value(QLatin1String("plan_gb")).toInt(), 500);
        EXPECT_EQ(subscribed.value(QLatin1String("monthly_price_cents")).toInt(), 1499);
        EXPECT_EQ(subscribed.value(QLatin1String("cycle_used_bytes")).toInt(-1), 0);
        EXPECT_EQ(account(service, token), subscribed);
        service.process().kill();
        service.waitForExit();
    }
    ServiceProcess service(arguments());
    service.waitForOrigin();
    EXPECT_EQ(account(service, token), subscribed);
    const auto again = post(service, jws, token);
    EXPECT_EQ(outcome(again), "200 ");
    EXPECT_EQ(again.body.value(QLatin1String("subscription")).toObject(), subscribed);
}

TEST_F(ServiceProgramTransaction, isRefusedUntilTheRootIsThere)
{
    ServiceProcess service(arguments());
    service.waitForOrigin();
    const QByteArray token = service.signIn();
    const QByteArray jws = m_store.sign(monthly());
    const QJsonObject before = account(service, token);
    EXPECT_EQ(outcome(post(service, jws, token)), "422 invalid_transaction");
    writeRoot("no certificate");
    EXPECT_EQ(outcome(post(service, jws, token)), "422 invalid_transaction");
    writeRoot(SigningIdentity::create(QDateTime::currentDateTimeUtc()).rootCertificate());
    EXPECT_EQ(outcome(post(service, jws, token)), "422 invalid_transaction");
    EXPECT_EQ(account(service, token), before);
    writeRoot(m_store.rootCertificate());
    EXPECT_EQ(outcome(post(service, jws, token)), "200 ");
}

TEST_F(ServiceProgramTransaction, isRefusedWhereTheRootIsAFolder)
{
    m_rootPath = m_folder.path();
    ServiceProcess service(arguments());
    service.waitForOrigin();
    EXPECT_EQ(outcome(post(service, m_store.sign(monthly()), service.signIn())), "422 invalid_transaction");
}

TEST_F(ServiceProgramTransaction, isRefusedWithoutChangeWhenItWasTamperedWith)
{
    writeRoot(m_store.rootCertificate());
    ServiceProcess service(arguments());
    service.waitForOrigin();
    const QByteArray token = service.signIn();
    const QJsonObject before = account(service, token);

    TransactionPayload longer = monthly();
    longer.expiresDate = *longer.expiresDate * 2;
    const QByteArray forged = test::withPayload(m_store.sign(monthly()), encodePayload(longer));
    EXPECT_EQ(outcome(post(service, forged, token)), "422 invalid_transaction");
    EXPECT_EQ(outcome(post(service, "not signed", token)), "422 invalid_signed_transaction_jws");
    TransactionPayload revoked = monthly();
    revoked.revocationDate = revoked.purchaseDate;
    EXPECT_EQ(outcome(post(service, m_store.sign(revoked), token)), "422 transaction_revoked");
    EXPECT_EQ(account(service, token), before);
}

TEST_F(ServiceProgramTransaction, isSeenByAnotherProcessOnTheDatabase)
{
    writeRoot(m_store.rootCertificate());
    ServiceProcess first(arguments());
    ServiceProcess second(arguments());
    ASSERT_FALSE(first.waitForOrigin().isEmpty()) << first.errorText();
    ASSERT_FALSE(second.waitForOrigin().isEmpty()) << second.errorText();
    const QByteArray token = first.signIn();
    const QByteArray jws = m_store.sign(monthly());
    EXPECT_EQ(outcome(post(first, jws, token)), "200 ");
    EXPECT_EQ(account(second, token).value(QLatin1String("plan_gb")).toInt(), 500);
    EXPECT_EQ(outcome(post(second, jws, token)), "200 ");
}

} // namespace
} // namespace tarnwik::service
