#pragma once

#include "platform/macos/storekit/StoreKitAppStore.h"
#include "support/EventLoop.h"
#include "support/StoreKitStandIn.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QThread>

#include <string>
#include <thread>
#include <vector>

namespace tarnwik::test {

/// The platform's App Store, with a stand-in for the platform's side.
class StoreKitTest : public testing::Test
{
protected:
    static constexpr char bought[] =
        R"({"outcome":"success","transaction":{"jws":"signed","id":"7","productId":"tarnwik.sub.monthly"}})";
    static constexpr char entitled[] = R"({"transactions":[
        {"jws":"signed","id":"7","productId":"tarnwik.sub.monthly"},
        {"jws":"forged","id":"8","productId":"tarnwik.sub.yearly","verificationError":
            {"type":"VerificationError","case":"invalidSignature","message":"The signature is invalid."}}]})";

    static std::string transaction(quint64 id)
    {
        return R"({"jws":"signed","id":")" + std::to_string(id) + R"(","productId":"tarnwik.sub.monthly"})";
    }

    static std::vector<std::string> calls(std::initializer_list<std::string> expected) { return expected; }

    /// Whatever thread the store replied from, its caller goes on in the main one.
    template<typename T>
    static Task<T> onMainThread(Task<T> task)
    {
        const auto check = qScopeGuard([] { EXPECT_EQ(QThread::currentThread(), qApp->thread()); });
        co_return co_await std::move(task);
    }

    static Task<QList<VerificationResult>> collect(std::shared_ptr<AppStore> store, std::stop_token token)
    {
        QList<VerificationResult> results;
        auto entitlements = store->currentEntitlements(token);
        for (auto result = co_await entitlements.begin(); result != entitlements.end(); co_await ++result)
            results.append(*result);
        co_return results;
    }

    QList<VerificationResult> readEntitlements() { return run(onMainThread(collect(m_store, {}))); }

    /// The sentence that \a operation fails with; nothing when it does not.
    template<typename Operation>
    static QString failure(Operation operation)
    {
        try {
            operation();
        } catch (const StoreError &error) {
            return error.localizedDescription();
        }
        return {};
    }

    const StoreProduct product{QStringLiteral("tarnwik.sub.monthly"), QStringLiteral("€15")};
    StoreKitStandIn m_bridge;
    std::shared_ptr<AppStore> m_store = storeKitAppStore();
};

} // namespace tarnwik::test
