import Foundation
import StoreKit

// What the replies of StoreKitBridge.swift are made of. The properties are the keys that StoreKitBridge.h names.

/// What cannot be encoded becomes a reply that is refused for what it lacks. Texts and finite numbers always can.
func json<Value: Encodable>(_ value: Value) -> String {
    let encoder = JSONEncoder()
    encoder.dateEncodingStrategy = .secondsSince1970
    guard let data = try? encoder.encode(value) else { return "{}" }
    return String(decoding: data, as: UTF8.self)
}

/// The answer to one question. What is nil has no key.
struct Reply: Encodable, Sendable {
    var products: [ProductRecord]?
    var outcome: String?
    var transaction: TransactionRecord?
    var transactions: [TransactionRecord]?
    var error: ErrorRecord?
}

struct ProductRecord: Encodable, Sendable {
    let id: String
    let displayPrice: String

    init(_ product: Product) {
        id = product.id
        displayPrice = product.displayPrice
    }
}

struct TransactionRecord: Encodable, Sendable {
    let jws: String
    let id: String
    let productId: String
    let revocationDate: Date?
    let verificationError: ErrorRecord?

    init(_ result: VerificationResult<Transaction>) {
        let transaction = result.unsafePayloadValue
        jws = result.jwsRepresentation
        id = String(transaction.id)
        productId = transaction.productID
        revocationDate = transaction.revocationDate
        switch result {
        case .verified:
            verificationError = nil
        case .unverified(_, let error):
            verificationError = ErrorRecord(error)
        }
    }
}

struct ErrorRecord: Encodable, Sendable {
    let type: String
    let `case`: String
    let message: String

    init(_ error: Error) {
        switch error {
        case let error as StoreKitError:
            type = "StoreKitError"
            `case` = name(of: error)
        case let error as Product.PurchaseError:
            type = "PurchaseError"
            `case` = name(of: error)
        case let error as VerificationResult<Transaction>.VerificationError:
            type = "VerificationError"
            `case` = name(of: error)
        case is CancellationError:
            type = "CancellationError"
            `case` = "cancelled"
        default:
            let error = error as NSError
            type = error.domain
            `case` = String(error.code)
        }
        message = error.localizedDescription
    }
}

// Written out: how a case prints is not promised. Cases that the SDK may gain are "other".

private func name(of error: StoreKitError) -> String {
    switch error {
    case .unknown: return "unknown"
    case .userCancelled: return "userCancelled"
    case .networkError: return "networkError"
    case .systemError: return "systemError"
    case .notAvailableInStorefront: return "notAvailableInStorefront"
    case .notEntitled: return "notEntitled"
    default: return "other"
    }
}

private func name(of error: Product.PurchaseError) -> String {
    switch error {
    case .invalidQuantity: return "invalidQuantity"
    case .productUnavailable: return "productUnavailable"
    case .purchaseNotAllowed: return "purchaseNotAllowed"
    case .ineligibleForOffer: return "ineligibleForOffer"
    case .invalidOfferIdentifier: return "invalidOfferIdentifier"
    case .invalidOfferPrice: return "invalidOfferPrice"
    case .invalidOfferSignature: return "invalidOfferSignature"
    case .missingOfferParameters: return "missingOfferParameters"
    default: return "other"
    }
}

private func name(of error: VerificationResult<Transaction>.VerificationError) -> String {
    switch error {
    case .revokedCertificate: return "revokedCertificate"
    case .invalidCertificateChain: return "invalidCertificateChain"
    case .invalidDeviceVerification: return "invalidDeviceVerification"
    case .invalidEncoding: return "invalidEncoding"
    case .invalidSignature: return "invalidSignature"
    case .missingRequiredProperties: return "missingRequiredProperties"
    default: return "other"
    }
}
