#pragma once

#include "jws/SignedTransaction.h"
#include "platform/BundleIdentifier.h"
#include "platform/embedded/store/EmbeddedAppStore.h"
#include "platform/embedded/store/EmbeddedStoreControl.h"
#include "support/EventLoop.h"
#include "support/ManualClock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTimeZone>

#include <memory>
#include <stop_token>

namespace tarnwik::test {

inline const QString monthly = QStringLiteral("tarnwik.sub.monthly");
inline const QString yearly = QStringLiteral("tarnwik.sub.yearly");

inline QByteArray storeConfiguration(const QByteArray &outcome, const QByteArray &rest = {})
{
    return R"({"storefront": "USA", "products": [
        {"id": "tarnwik.sub.yearly", "period": "P1Y", "display_prices": {"USA": "$119.00", "DEU": "119,00 €"}},
        {"id": "tarnwik.sub.monthly", "period": "P1M", "display_prices": {"USA": "$14.99"}}],
        "next_purchase": {"outcome": ")"
        + outcome + "\"" + (outcome == "failing" ? R"(, "message": "The card was refused.")" : "") + "}" + rest + "}";
}

/// Somebody who listens to a store's updates until they are told to stop.
class UpdateListener
{
public:
    explicit UpdateListener(std::shared_ptr<AppStore> store)
        : m_task(follow(std::move(store), m_results, m_source.get_token()))
    {
    }

    ~UpdateListener()
    {
        stop();
        spinUntil([this] { return m_task.hasEnded(); });
    }

    UpdateListener(const UpdateListener &) = delete;
    UpdateListener &operator=(const UpdateListener &) = delete;

    const QList<VerificationResult> &results() const { return *m_results; }
    /// Whether there are \a count updates soon, and no more than these.
    bool hears(qsizetype count) const
    {
        spinUntil([&] { return m_results->size() >= count; });
        spinFor(std::chrono::milliseconds(30));
        return m_results->size() == count;
    }

    void stop() { m_source.request_stop(); }
    Running<> &task() { return m_task; }

private:
    using Results = std::shared_ptr<QList<VerificationResult>>;

    static Task<> follow(std::shared_ptr<AppStore> store, Results results, std::stop_token token)
    {
        auto updates = store->transactionUpdates(token);
        for (auto update = co_await updates.begin(); update != updates.end(); co_await ++update)
            results->append(*update);
    }

    std::stop_source m_source;
    Results m_results = std::make_shared<QList<VerificationResult>>();
    Running<> m_task;
};

/// Stores on one folder, which is what several programs have.
class EmbeddedStoreTest : public testing::Test
{
protected:
    EmbeddedStoreTest() { configure("success"); }

    std::shared_ptr<AppStore> open()
    {
        return embeddedAppStore(m_path, m_clock, [this] { return m_time; });
    }

    EmbeddedStoreControl control() const
    {
        return EmbeddedStoreControl(m_path, [this] { return m_time; });
    }

    QString file(const char *name) const { return QDir(m_path).filePath(QString::fromLatin1(name)); }

    QByteArray content(const QString &path) const
    {
        QFile opened(path);
        return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray("(unreadable)");
    }

    void write(const char *name, const QByteArray &bytes) const
    {
        QDir().mkpath(m_path);
        QFile opened(file(name));
        ASSERT_TRUE(opened.open(QIODevice::WriteOnly));
        ASSERT_EQ(opened.write(bytes), bytes.size());
    }

    void configure(const QByteArray &outcome, const QByteArray &rest = {}) const
    {
        write("configuration.json", storeConfiguration(outcome, rest));
    }

    PurchaseResult buy(const QString &productID, const PurchaseOptions &options = {})
    {
        return run(m_store->purchase(StoreProduct{productID, QString()}, options, {}));
    }

    QList<VerificationResult> currentEntitlements(const std::shared_ptr<AppStore> &store) const
    {
        return run(collect(store));
    }

    QStringList entitledTo(const std::shared_ptr<AppStore> &store) const
    {
        QStringList ids;
        for (const VerificationResult &result : currentEntitlements(store))
            ids << result.transaction.productID + (result.verificationError ? QStringLiteral("?") : QString());
        return ids;
    }

    /// What a result says, after checking it against the store's root.
    TransactionPayload payload(const VerificationResult &result) const
    {
        TransactionTrust trust;
        trust.rootCertificate = embeddedStoreRoot(m_path).value_or(QByteArray());
        trust.bundleIdentifier = bundleIdentifier();
        trust.now = now();
        return verifyTransaction(result.jwsRepresentation.toUtf8(), trust);
    }

    QDateTime now() const { return QDateTime::fromMSecsSinceEpoch(m_time.count(), Qt::UTC); }
    void setNow(const char *iso)
    {
        m_time =
            std::chrono::milliseconds(QDateTime::fromString(QString::fromLatin1(iso), Qt::ISODate).toMSecsSinceEpoch());
    }

    /// The sentence that \a operation fails with.
    template<typename Operation>
    QString failure(Operation operation) const
    {
        try {
            operation();
        } catch (const StoreError &error) {
            return error.localizedDescription();
        }
        return QStringLiteral("(no failure)");
    }

    static Task<QList<VerificationResult>> collect(std::shared_ptr<AppStore> store, std::stop_token token = {})
    {
        QList<VerificationResult> results;
        auto sequence = store->currentEntitlements(token);
        for (auto result = co_await sequence.begin(); result != sequence.end(); co_await ++result)
            results.append(*result);
        co_return results;
    }

    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(QStringLiteral("demo/store"));
    std::shared_ptr<ManualClock> m_clock = std::make_shared<ManualClock>();
    std::chrono::milliseconds m_time =
        std::chrono::milliseconds(QDateTime(QDate(2026, 11, 21), QTime(14, 25, 36), Qt::UTC).toMSecsSinceEpoch());
    std::shared_ptr<AppStore> m_store = open();
};

} // namespace tarnwik::test
