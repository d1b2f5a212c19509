#include "support/FakeAppStore.h"

#include "async/Clock.h"

#include <QScopeGuard>

#include <utility>

namespace tarnwik::test {

Task<> FakeAppStore::perform(QString operation, std::stop_token token)
{
    operations << operation;
    const QString name = operation.section(u' ', 0, 0);
    if (held.contains(name)) {
        const auto gate = m_gates.emplace_back(std::make_shared<async::Gate>());
        co_await gate->wait(token);
    }
    co_await async::yield(token);
    if (const auto failure = failures.find(name); failure != failures.end()) {
        if (*failure == QStringLiteral("cancelled"))
            throw async::Cancelled();
        throw StoreError(*failure);
    }
}

Task<QList<StoreProduct>> FakeAppStore::products(QStringList productIDs, std::stop_token token)
{
    co_await perform(QStringLiteral("products ") + productIDs.join(u' '), std::move(token));
    co_return QList<StoreProduct>(offered);
}

Task<PurchaseResult> FakeAppStore::purchase(StoreProduct product, PurchaseOptions options, std::stop_token token)
{
    purchaseOptions << options;
    // What the user decides is decided when the purchase begins: a test may change it for the next one meanwhile.
    PurchaseResult result = nextPurchase;
    co_await perform(QStringLiteral("purchase ") + product.id, std::move(token));
    co_return result;
}

AsyncGenerator<VerificationResult> FakeAppStore::transactionUpdates(std::stop_token token)
{
    operations << QStringLiteral("updates");
    ++listenerCount;
    const auto atTheEnd = qScopeGuard([this] { --listenerCount; });
    for (;;) {
        while (!m_updates.empty()) {
            const VerificationResult result = m_updates.front();
            m_updates.pop_front();
            co_yield VerificationResult(result);
        }
        if (failures.contains(QStringLiteral("updates")))
            throw StoreError(failures.value(QStringLiteral("updates")));
        m_updateGate = std::make_shared<async::Gate>();
        co_await m_updateGate->wait(token);
    }
}

AsyncGenerator<VerificationResult> FakeAppStore::currentEntitlements(std::stop_token token)
{
    const auto listed = entitlements;
    try {
        co_await perform(QStringLiteral("entitlements"), token);
    } catch (const async::Cancelled &) {
        if (endsEntitlementsWhenStopped)
            co_return;
        throw;
    }
    for (const VerificationResult &entitlement : listed) {
        co_yield VerificationResult(entitlement);
        co_await async::yield(token);
    }
}

Task<> FakeAppStore::finish(StoreTransaction transaction)
{
    co_await perform(QStringLiteral("finish %1").arg(transaction.id), {});
}

Task<> FakeAppStore::sync(std::stop_token token)
{
    co_await perform(QStringLiteral("sync"), std::move(token));
}

void FakeAppStore::release()
{
    held.clear();
    for (const auto &gate : std::exchange(m_gates, {}))
        gate->open();
}

void FakeAppStore::update(const VerificationResult &result)
{
    m_updates.push_back(result);
    if (m_updateGate)
        m_updateGate->open();
}

VerificationResult verified(const char *productID, const char *jws, quint64 id)
{
    VerificationResult result;
    result.transaction.id = id;
    result.transaction.productID = QString::fromUtf8(productID);
    result.jwsRepresentation = QString::fromUtf8(jws);
    return result;
}

VerificationResult unverified(const char *productID, const char *sentence)
{
    VerificationResult result = verified(productID, "forged");
    result.verificationError = StoreError(QString::fromUtf8(sentence));
    return result;
}

} // namespace tarnwik::test
