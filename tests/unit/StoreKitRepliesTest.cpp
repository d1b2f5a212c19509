// What the bridge's replies mean, and which are refused.

#include "platform/macos/storekit/StoreKitReplies.h"

#include <gtest/gtest.h>

#include <functional>

namespace tarnwik::test {

namespace {

const QString unreadable = QStringLiteral("The App Store gave an answer that cannot be read.");
const QString product = QStringLiteral("tarnwik.sub.monthly");

/// The sentence that \a read fails with; nothing when it does not.
template<typename Read>
QString failure(Read read)
{
    try {
        read();
    } catch (const StoreError &error) {
        return error.localizedDescription();
    }
    return {};
}

const std::vector<std::function<void(const std::string &)>> &readers()
{
    static const std::vector<std::function<void(const std::string &)>> all{
        [](const std::string &json) { readProducts(json); },
        [](const std::string &json) { readPurchase(json, product); },
        [](const std::string &json) { readEntitlements(json); },
        [](const std::string &json) { readCompletion(json); },
    };
    return all;
}

std::string errorReply(const std::string &type, const std::string &name, const std::string &message)
{
    return R"({"error":{"type":")" + type + R"(","case":")" + name + R"(","message":")" + message + R"("}})";
}

TEST(StoreKitReplies, productsComeInTheStoresOrder)
{
    EXPECT_TRUE(readProducts(R"({"products":[]})").isEmpty());
    EXPECT_EQ(readProducts(R"({"products":[{"id":"b","displayPrice":"€ 119,00"},{"displayPrice":"$15","id":"a"}]})"),
              (QList<StoreProduct>{{QStringLiteral("b"), QStringLiteral("€ 119,00")},
                                   {QStringLiteral("a"), QStringLiteral("$15")}}));
}

TEST(StoreKitReplies, aProductMayHaveAnEmptyPrice)
{
    EXPECT_EQ(readProducts(R"({"products":[{"id":"a","displayPrice":""}]})"),
              (QList<StoreProduct>{{QStringLiteral("a"), QString()}}));
}

TEST(StoreKitReplies, aPurchasesTransactionIsReadWhole)
{
    const PurchaseResult result = readPurchase(
        R"({"outcome":"success","transaction":{"jws":"a.b.c","id":"18446744073709551615","productId":"p"}})", product);
    EXPECT_EQ(result.outcome, PurchaseOutcome::Success);
    ASSERT_TRUE(result.verification);
    EXPECT_EQ(result.verification->jwsRepresentation, QStringLiteral("a.b.c"));
    EXPECT_EQ(result.verification->transaction.id, std::numeric_limits<quint64>::max());
    EXPECT_EQ(result.verification->transaction.productID, QStringLiteral("p"));
    EXPECT_FALSE(result.verification->transaction.revocationDate);
    EXPECT_FALSE(result.verification->verificationError);
}

TEST(StoreKitReplies, aPurchaseHasEveryOtherOutcomeWithoutATransaction)
{
    const auto outcome = [](const char *word) {
        const PurchaseResult result = readPurchase(std::string(R"({"outcome":")") + word + R"("})", product);
        EXPECT_FALSE(result.verification);
        return result.outcome;
    };
    EXPECT_EQ(outcome("pending"), PurchaseOutcome::Pending);
    EXPECT_EQ(outcome("cancelled"), PurchaseOutcome::UserCancelled);
    EXPECT_EQ(outcome("unknown"), PurchaseOutcome::Unknown);
    EXPECT_EQ(outcome("deferredToGuardian"), PurchaseOutcome::Unknown);
}

TEST(StoreKitReplies, aProductThatTheStoreDoesNotHaveIsNamed)
{
    EXPECT_EQ(failure([] { readPurchase(R"({"outcome":"missingProduct"})", product); }),
              QStringLiteral("The App Store does not offer “tarnwik.sub.monthly”."));
}

TEST(StoreKitReplies, entitlementsTellRevocationsAndBadSignatures)
{
    const auto results = readEntitlements(R"({"transactions":[
        {"jws":"a","id":"1","productId":"p","revocationDate":1767225600.25},
        {"jws":"b","id":"2","productId":"q","verificationError":
            {"type":"VerificationError","case":"invalidSignature","message":"The signature is invalid."}},
        {"jws":"c","id":"3","productId":"r","revocationDate":0}]})");
    ASSERT_EQ(results.size(), 3);
    EXPECT_EQ(results[0].transaction.revocationDate, QDateTime(QDate(2026, 1, 1), QTime(0, 0, 0, 250), Qt::UTC));
    EXPECT_FALSE(results[0].verificationError);
    ASSERT_TRUE(results[1].verificationError);
    EXPECT_EQ(results[1].verificationError->localizedDescription(), QStringLiteral("The signature is invalid."));
    EXPECT_EQ(results[1].jwsRepresentation, QStringLiteral("b"));
    EXPECT_EQ(results[2].transaction.revocationDate, QDateTime::fromMSecsSinceEpoch(0, Qt::UTC));
}

TEST(StoreKitReplies, everyErrorSaysWhatThePlatformSays)
{
    const std::vector<std::pair<std::string, std::vector<std::string>>> errors{
        {"StoreKitError",
         {"unknown", "networkError", "systemError", "notAvailableInStorefront", "notEntitled", "other"}},
        {"PurchaseError",
         {"invalidQuantity", "productUnavailable", "purchaseNotAllowed", "ineligibleForOffer", "invalidOfferIdentifier",
          "invalidOfferPrice", "invalidOfferSignature", "missingOfferParameters", "other", "userCancelled"}},
        {"VerificationError",
         {"revokedCertificate", "invalidCertificateChain", "invalidDeviceVerification", "invalidEncoding",
          "invalidSignature", "missingRequiredProperties", "other"}},
        {"ASDErrorDomain", {"500"}},
    };
    for (const auto &[type, names] : errors) {
        for (const std::string &name : names) {
            for (const auto &read : readers()) {
                const std::string sentence = "“" + name + "” – it went wrong.";
                EXPECT_EQ(failure([&] { read(errorReply(type, name, sentence)); }), QString::fromStdString(sentence))
                    << type;
            }
        }
    }
}

TEST(StoreKitReplies, cancellationsAreNoErrors)
{
    for (const auto &read : readers()) {
        EXPECT_THROW(read(errorReply("StoreKitError", "userCancelled", "Request Cancelled")), async::Cancelled);
        EXPECT_THROW(read(errorReply("CancellationError", "cancelled", "error 1.")), async::Cancelled);
    }
}

TEST(StoreKitReplies, anErrorWithoutWordsGetsThePlatformsGeneralOnes)
{
    EXPECT_EQ(failure([] { readCompletion(errorReply("StoreKitError", "unknown", "")); }),
              QStringLiteral("The operation couldn’t be completed."));
}

TEST(StoreKitReplies, aCompletionNeedsNothingButAnObject)
{
    EXPECT_NO_THROW(readCompletion("{}"));
}

TEST(StoreKitReplies, whatIsNoObjectIsRefusedByAll)
{
    const std::vector<std::string> malformed{"",
                                             " ",
                                             "{",
                                             "[]",
                                             "null",
                                             "1",
                                             "\"text\"",
                                             "{} {}",
                                             R"({"error":{}})",
                                             R"({"error":null})",
                                             R"({"error":"text"})",
                                             R"({"error":{"type":"StoreKitError","case":"unknown"}})",
                                             R"({"error":{"type":"StoreKitError","message":"No case."}})",
                                             R"({"error":{"case":"unknown","message":"No type."}})",
                                             R"({"error":{"type":1,"case":"unknown","message":"A number."}})",
                                             "{\"outcome\":\"\xff\"}",
                                             "{\"products\":[],\"transactions\":[],\"outcome\":\"pending\",}"};
    for (const std::string &json : malformed) {
        for (const auto &read : readers())
            EXPECT_EQ(failure([&] { read(json); }), unreadable) << json;
    }
}

TEST(StoreKitReplies, whatLacksItsResultIsRefused)
{
    const std::vector<std::string> products{"{}",
                                            R"({"products":null})",
                                            R"({"products":{}})",
                                            R"({"products":[1]})",
                                            R"({"products":[{"id":"a"}]})",
                                            R"({"products":[{"displayPrice":"$1"}]})",
                                            R"({"products":[{"id":"","displayPrice":"$1"}]})",
                                            R"({"products":[{"id":1,"displayPrice":"$1"}]})",
                                            R"({"products":[{"id":"a","displayPrice":15}]})"};
    for (const std::string &json : products)
        EXPECT_EQ(failure([&] { readProducts(json); }), unreadable) << json;

    const std::vector<std::string> purchases{"{}", R"({"outcome":1})", R"({"outcome":"success"})",
                                             R"({"outcome":"success","transaction":[]})"};
    for (const std::string &json : purchases)
        EXPECT_EQ(failure([&] { readPurchase(json, product); }), unreadable) << json;

    for (const char *json : {"{}", R"({"transactions":{}})", R"({"transactions":["a"]})"})
        EXPECT_EQ(failure([&] { readEntitlements(json); }), unreadable) << json;
}

const std::vector<std::string> malformedTransactions{
    "",
    "[]",
    "{}",
    R"({"id":"1","productId":"p"})",
    R"({"jws":"a","productId":"p"})",
    R"({"jws":"a","id":"1"})",
    R"({"jws":"","id":"1","productId":"p"})",
    R"({"jws":"a","id":1,"productId":"p"})",
    R"({"jws":"a","id":"","productId":"p"})",
    R"({"jws":"a","id":"-1","productId":"p"})",
    R"({"jws":"a","id":"01","productId":"p"})",
    R"({"jws":"a","id":"1 ","productId":"p"})",
    R"({"jws":"a","id":"18446744073709551616","productId":"p"})",
    R"({"jws":"a","id":"1","productId":""})",
    R"({"jws":"a","id":"1","productId":"p","revocationDate":"2026-01-01"})",
    R"({"jws":"a","id":"1","productId":"p","revocationDate":null})",
    R"({"jws":"a","id":"1","productId":"p","revocationDate":1e300})",
    R"({"jws":"a","id":"1","productId":"p","verificationError":"bad"})",
    R"({"jws":"a","id":"1","productId":"p","verificationError":{"type":"VerificationError","case":"invalidSignature"}})",
};

TEST(StoreKitReplies, aTransactionThatIsNotWholeSpoilsTheReply)
{
    for (const std::string &transaction : malformedTransactions) {
        EXPECT_EQ(failure([&] { readPurchase(R"({"outcome":"success","transaction":)" + transaction + "}", product); }),
                  unreadable)
            << transaction;
        // An empty text would leave a list without elements, which is fine.
        if (!transaction.empty()) {
            EXPECT_EQ(failure([&] { readEntitlements(R"({"transactions":[)" + transaction + "]}"); }), unreadable)
                << transaction;
        }
    }
}

TEST(StoreKitReplies, anUpdateIsReadLikeAnyTransaction)
{
    const VerificationResult result = readUpdate(R"({"jws":"a","id":"7","productId":"p","revocationDate":1})");
    EXPECT_EQ(result.transaction.id, 7U);
    EXPECT_EQ(result.transaction.revocationDate, QDateTime::fromMSecsSinceEpoch(1000, Qt::UTC));
    EXPECT_FALSE(result.verificationError);
}

TEST(StoreKitReplies, anUpdateThatCannotBeReadIsUnverified)
{
    for (const std::string &transaction : malformedTransactions) {
        const VerificationResult result = readUpdate(transaction);
        ASSERT_TRUE(result.verificationError) << transaction;
        EXPECT_EQ(result.verificationError->localizedDescription(), unreadable);
        EXPECT_EQ(result.transaction, StoreTransaction());
        EXPECT_TRUE(result.jwsRepresentation.isEmpty());
    }
}

} // namespace
} // namespace tarnwik::test
