import Foundation
import StoreKit

// The App Store for C: StoreKitBridge.h says what each function does, and how its replies look. Nothing is decided here.

/// `store_reply` and `store_event`.
public typealias StoreFunction = @convention(c) (UnsafeMutableRawPointer?, UnsafePointer<CChar>?) -> Void

/// A caller's function with its context. The caller promises that both may be used from any thread.
struct Receiver: @unchecked Sendable {
    let context: UnsafeMutableRawPointer?
    let function: StoreFunction

    func receive<Value: Encodable>(_ value: Value) {
        function(context, json(value))
    }

    /// Replies with what `operation` returns, or with the error that it throws.
    func reply(with operation: @escaping @Sendable () async throws -> Reply) {
        Task {
            do {
                receive(try await operation())
            } catch {
                receive(Reply(error: ErrorRecord(error)))
            }
        }
    }
}

// MARK: - What is kept between the calls

/// The store's own values, which C knows by their identifiers.
private actor StoreValues {
    static let shared = StoreValues()

    private var knownProducts: [String: Product] = [:]
    /// The transactions that were handed out and not finished yet.
    private var unfinishedTransactions: [UInt64: Transaction] = [:]

    func products(for ids: [String]) async throws -> [Product] {
        let found = try await Product.products(for: ids)
        for product in found {
            knownProducts[product.id] = product
        }
        return found
    }

    func product(for id: String) async throws -> Product? {
        if let known = knownProducts[id] { return known }
        return try await products(for: [id]).first
    }

    func keep(_ result: VerificationResult<Transaction>) -> TransactionRecord {
        let transaction = result.unsafePayloadValue
        unfinishedTransactions[transaction.id] = transaction
        return TransactionRecord(result)
    }

    func finish(_ id: UInt64) async {
        if let known = unfinishedTransactions.removeValue(forKey: id) {
            await known.finish()
            return
        }
        for await result in Transaction.unfinished where result.unsafePayloadValue.id == id {
            await result.unsafePayloadValue.finish()
        }
    }
}

/// Follows the updates until it is stopped.
private final class UpdatesListener: @unchecked Sendable {
    private let receiver: Receiver
    /// Held while an event is reported, so that stop() waits for it. Guards `isStopped`.
    private let lock = NSLock()
    private var isStopped = false
    private var task: Task<Void, Never>?

    init(_ receiver: Receiver) {
        self.receiver = receiver
    }

    /// The task keeps the listener alive until stop() has ended it.
    func start() {
        task = Task {
            for await result in Transaction.updates {
                report(await StoreValues.shared.keep(result))
            }
        }
    }

    func stop() {
        lock.withLock { isStopped = true }
        task?.cancel()
        task = nil
    }

    private func report(_ transaction: TransactionRecord) {
        lock.withLock {
            if !isStopped {
                receiver.receive(transaction)
            }
        }
    }
}

// MARK: - The functions

@_cdecl("store_products")
public func storeProducts(
    _ ids: UnsafePointer<UnsafePointer<CChar>?>?, _ count: Int,
    _ context: UnsafeMutableRawPointer?, _ function: @escaping StoreFunction
) {
    let ids = UnsafeBufferPointer(start: ids, count: count).compactMap { $0.map { String(cString: $0) } }
    Receiver(context: context, function: function).reply {
        Reply(products: try await StoreValues.shared.products(for: ids).map { ProductRecord($0) })
    }
}

@_cdecl("store_purchase")
public func storePurchase(
    _ productID: UnsafePointer<CChar>, _ accountUUID: UnsafePointer<CChar>?,
    _ context: UnsafeMutableRawPointer?, _ function: @escaping StoreFunction
) {
    let productID = String(cString: productID)
    let accountUUID = accountUUID.map { String(cString: $0) }
    Receiver(context: context, function: function).reply {
        guard let product = try await StoreValues.shared.product(for: productID) else {
            return Reply(outcome: "missingProduct")
        }
        var options: Set<Product.PurchaseOption> = []
        if let accountUUID {
            // Rather none than a purchase that belongs to nobody.
            guard let account = UUID(uuidString: accountUUID) else { throw StoreKitError.unknown }
            options.insert(.appAccountToken(account))
        }
        let result = try await product.purchase(options: options)
        switch result {
        case .success(let verification):
            return Reply(outcome: "success", transaction: await StoreValues.shared.keep(verification))
        case .userCancelled:
            return Reply(outcome: "cancelled")
        case .pending:
            return Reply(outcome: "pending")
        @unknown default:
            return Reply(outcome: "unknown")
        }
    }
}

@_cdecl("store_entitlements")
public func storeEntitlements(
    _ context: UnsafeMutableRawPointer?, _ function: @escaping StoreFunction
) {
    Receiver(context: context, function: function).reply {
        var transactions: [TransactionRecord] = []
        for await result in Transaction.currentEntitlements {
            transactions.append(TransactionRecord(result))
        }
        return Reply(transactions: transactions)
    }
}

@_cdecl("store_updates_start")
public func storeUpdatesStart(
    _ context: UnsafeMutableRawPointer?, _ function: @escaping StoreFunction
) -> UnsafeMutableRawPointer {
    let listener = UpdatesListener(Receiver(context: context, function: function))
    listener.start()
    return Unmanaged.passRetained(listener).toOpaque()
}

@_cdecl("store_updates_stop")
public func storeUpdatesStop(_ handle: UnsafeMutableRawPointer) {
    Unmanaged<UpdatesListener>.fromOpaque(handle).takeRetainedValue().stop()
}

@_cdecl("store_finish")
public func storeFinish(
    _ transactionID: UInt64,
    _ context: UnsafeMutableRawPointer?, _ function: @escaping StoreFunction
) {
    Receiver(context: context, function: function).reply {
        await StoreValues.shared.finish(transactionID)
        return Reply()
    }
}

@_cdecl("store_sync")
public func storeSync(
    _ context: UnsafeMutableRawPointer?, _ function: @escaping StoreFunction
) {
    Receiver(context: context, function: function).reply {
        try await AppStore.sync()
        return Reply()
    }
}
