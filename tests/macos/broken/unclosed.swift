import StoreKit

@_cdecl("store_can_make_payments")
public func storeCanMakePayments() -> Bool {
    guard AppStore.canMakePayments else { return false
    return true
}
