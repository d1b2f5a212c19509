// Stand-ins, and what is found on a screen, have no types that could be checked.
// qmllint disable
import QtQuick
import QtTest
import Tarnwik
import Tarnwik.Controls

ScreenTest {
    id: test

    name: "Account"
    screen: Component {
        AccountView {
            appModel: test.standIns.appModel
            appStoreSubscriptions: test.standIns.appStoreSubscriptions
            actions: test.standIns.actions
            tasks: test.standIns.tasks
        }
    }

    function showWith(changes) {
        standIns.appModel.account = standIns.accountWith(changes ?? {})
        return show()
    }
    function plans() { return all(item => item instanceof AppStorePlanRow) }
    function plan(index, values) {
        for (const key in values)
            standIns.appStoreSubscriptions.plans.setProperty(index, key, values[key])
    }

    function test_readsTheStoreWhileItIsShown() {
        showWith()
        compare(standIns.tasks.runningKinds(), [AppearanceTasks.AccountScreen])
        shown.destroy()
        tryVerify(() => standIns.tasks.runningKinds().length === 0)
        shown = null
    }
    function test_readsTheStoreAlsoWhileThereIsNoAccount() {
        show()
        verify(find("noAccount"))
        compare(standIns.tasks.begun, [AppearanceTasks.AccountScreen])
        compare(standIns.tasks.runningKinds(), [AppearanceTasks.AccountScreen])
    }
    function test_anAccountThatComesOrGoesLeavesTheTaskAlone() {
        show()
        standIns.appModel.account = standIns.account
        verify(find("email"))
        standIns.appModel.account = undefined
        verify(find("noAccount"))
        compare(standIns.tasks.begun, [AppearanceTasks.AccountScreen])
        compare(standIns.tasks.runningKinds(), [AppearanceTasks.AccountScreen])
    }
    function test_noAccountShowsOnlyThat() {
        show()
        verify(findText("No account"))
        verify(findWhere(item => item instanceof Icon && item.symbol === "person.crop.circle.badge.exclamationmark"))
        compare(find("email"), null)
        compare(find("restore"), null)
    }
    function test_accountThatComesAndGoesIsFollowed() {
        show()
        standIns.appModel.account = standIns.account
        verify(find("email"))
        compare(find("noAccount"), null)
        standIns.appModel.account = undefined
        verify(find("noAccount"))
        tryVerify(() => find("email") === null)
    }
    function test_blocksStandInTheirOrder() {
        showWith()
        const order = ["email", "statusLine", "meter", "plan", "monthlyPrice", "billingProvider", "manageBilling", "appStoreHeading", "restore"].map(name => find(name))
        for (let index = 1; index < order.length; ++index)
            verify(placeOf(order[index]).y >= placeOf(order[index - 1]).y + order[index - 1].height, order[index].objectName)
    }
    function test_headerShowsEmailAndStatus() {
        showWith()
        compare(find("email").text, "mira@example.org")
        compare(find("email").textStyle, "title")
        compare(find("statusLine").text, "Account active · subscription in trial")
    }
    function test_statusLineIsRedWhenTheServiceIsDisabled() {
        showWith()
        compare(find("statusLine").color, Theme.secondary)
        standIns.appModel.account = standIns.accountWith({ isServiceEnabled: false })
        compare(find("statusLine").color, Theme.red)
    }
    function test_meterIsThatOfTheConnectScreen() {
        showWith()
        verify(find("meter") instanceof UsageMeter)
        compare(find("meter").value, 0.248)
        compare(find("meter").caption, "12.4 GB used of 50 GB")
    }
    function test_threeLabelledRows() {
        showWith({ billingProvider: "stripe" })
        compare([find("plan").label, find("plan").value], ["Plan", "50 GB"])
        compare([find("monthlyPrice").label, find("monthlyPrice").value], ["Monthly price", "$14.99"])
        compare([find("billingProvider").label, find("billingProvider").value], ["Billing provider", "stripe"])
    }
    function test_billingPortalIsAButton() {
        showWith()
        const button = find("manageBilling")
        verify(button instanceof ProminentButton)
        compare(button.text, "Manage billing")
        compare(button.symbol, "creditcard")
        compare(find("noPortal"), null)
        click(button)
        compare(standIns.actions.manageBilling.triggered, 1)
    }
    function test_withoutAPortalThatIsSaid() {
        showWith({ billingPortalURL: undefined })
        compare(find("manageBilling"), null)
        compare(find("noPortal").text, "Billing portal is not enabled for this build.")
        compare(find("noPortal").textStyle, "footnote")
        compare(find("noPortal").color, Theme.secondary)
    }
    function test_gapsAndPaddingAreThoseOfTheScreen() {
        showWith()
        const gap = (upper, lower) => placeOf(lower).y - placeOf(upper).y - upper.height
        compare(placeOf(find("email")).x, 24)
        compare(placeOf(find("email")).y, 24)
        compare(find("email").width, 720 - 48)
        compare(gap(find("email"), find("statusLine")), 8)
        compare(gap(find("statusLine"), find("meter")), 18)
        compare(gap(find("meter"), find("plan")), 18)
        compare(gap(find("plan"), find("monthlyPrice")), 18)
        compare(gap(find("billingProvider"), find("manageBilling")), 18)
        compare(gap(plans()[0], plans()[1]), 12)
        compare(gap(plans()[1], find("restore")), 12)
    }
    function test_gapsAndPaddingOfAPlanRow() {
        showWith()
        const row = plans()[1]
        const title = find("title", row)
        const price = find("priceLine", row)
        const button = find("subscribe", row)
        compare(row.radius, 8)
        compare(title.parent.spacing, 4)
        compare(placeOf(price).y - placeOf(title).y - title.height, 4)
        compare(placeOf(title).x - placeOf(row).x, 12)
        compare(placeOf(row).x + row.width - placeOf(button).x - button.width, 12)
        compare(row.height, Math.max(title.parent.height, button.parent.height) + 2 * 12)
        compare(row.gap, 12)
        compare(placeOf(button).x - placeOf(title).x - title.width, 12)
    }
    function test_gapsAndPaddingOfAPlanRowWithItsButtonBelow() {
        plan(1, { priceLine: "A price that takes more room than is left beside its button" })
        standIns.appModel.account = standIns.account
        show({ width: 420, height: 540 })
        const row = plans()[1]
        const title = find("title", row)
        const price = find("priceLine", row)
        const side = find("subscribe", row).parent
        verify(row.isStacked)
        compare(placeOf(title).x - placeOf(row).x, 12)
        compare(placeOf(title).y - placeOf(row).y, 12)
        compare(placeOf(side).x - placeOf(row).x, 12)
        compare(placeOf(side).y - placeOf(price).y - price.height, 12)
        compare(placeOf(row).y + row.height - placeOf(side).y - side.height, 12)
    }
    function test_gapOfTheMeter() {
        showWith()
        const meter = find("meter")
        compare(meter.spacing, 6)
        const bar = meter.children[0]
        const caption = meter.children[1]
        compare(placeOf(caption).y - placeOf(bar).y - bar.height, 6)
        compare(bar.height, 6)
    }

    function test_appStoreHeading() {
        showWith()
        compare(find("appStoreHeading").text, "App Store")
        compare(find("appStoreHeading").textStyle, "headline")
    }
    function test_appStoreStatusTellsWhetherASubscriptionIsActive() {
        showWith()
        const status = find("appStoreStatus")
        compare([status.text, status.symbol, status.textStyle], ["Not active", "circle", "captionSemibold"])
        compare(status.tint, Theme.secondary)
        standIns.appStoreSubscriptions.hasActiveSubscription = true
        compare([status.text, status.symbol], ["Active", "checkmark.circle.fill"])
        compare(status.tint, Theme.green)
    }
    function test_waitingForSyncNotice_data() {
        return [
            { tag: "active, service on", isActive: true, isServiceEnabled: true, isShown: false },
            { tag: "active, service off", isActive: true, isServiceEnabled: false, isShown: true },
            { tag: "not active, service on", isActive: false, isServiceEnabled: true, isShown: false },
            { tag: "not active, service off", isActive: false, isServiceEnabled: false, isShown: false }
        ]
    }
    function test_waitingForSyncNotice(data) {
        standIns.appStoreSubscriptions.hasActiveSubscription = data.isActive
        showWith({ isServiceEnabled: data.isServiceEnabled })
        compare(find("waitingForSync") !== null, data.isShown)
        if (data.isShown)
            compare(find("waitingForSync").text, "App Store subscription found. Account access is waiting for server sync.")
    }
    function test_plansHaveARowEachInOrder() {
        showWith()
        compare(plans().map(row => find("title", row).text), ["Monthly", "Yearly"])
        compare(plans().map(row => find("priceLine", row).text), ["$14.99/month", "$119.00/year · $9.99/month"])
    }
    function test_planThatCanBeBought() {
        showWith()
        const button = find("subscribe", plans()[1])
        verify(button instanceof ProminentButton)
        compare([button.text, button.symbol, button.enabled, button.busy], ["Subscribe", "creditcard", true, false])
        click(button)
        compare(standIns.appStoreSubscriptions.purchased, [1])
    }
    function test_planThatIsBeingBoughtSpinsAndOnlyItIsDisabled() {
        showWith()
        plan(0, { isPurchasing: true })
        const button = find("subscribe", plans()[0])
        compare([button.enabled, button.busy], [false, true])
        compare(find("subscribe", plans()[1]).enabled, true)
        compare(find("subscribe", plans()[1]).busy, false)
    }
    function test_planWithoutAProductIsUnavailable() {
        showWith()
        plan(1, { isUnavailable: true })
        const button = find("subscribe", plans()[1])
        compare([button.text, button.symbol, button.enabled], ["Unavailable", "creditcard", false])
        compare(find("subscribe", plans()[0]).text, "Subscribe")
    }
    function test_whileProductsLoadNoPlanIsCalledUnavailable() {
        standIns.appStoreSubscriptions.isLoadingProducts = true
        showWith()
        compare(plans().map(row => find("subscribe", row).text), ["Subscribe", "Subscribe"])
    }
    function test_activePlanHasALabelAndNoButton() {
        showWith()
        plan(0, { isActive: true })
        const label = find("active", plans()[0])
        compare([label.text, label.symbol, label.textStyle], ["Active", "checkmark.seal.fill", "caption"])
        compare(label.tint, Theme.green)
        compare(find("subscribe", plans()[0]), null)
        verify(find("subscribe", plans()[1]))
    }
    function test_storesMessagesAreShownWhenPresent() {
        showWith()
        compare(find("storeStatus"), null)
        compare(find("storeError"), null)
        standIns.appStoreSubscriptions.statusMessage = "Purchase is pending approval."
        standIns.appStoreSubscriptions.errorMessage = "Purchase failed."
        waitForRendering(shown)
        compare(find("storeStatus").text, "Purchase is pending approval.")
        compare(find("storeStatus").color, Theme.secondary)
        compare(find("storeStatus").textStyle, "footnote")
        compare(find("storeError").text, "Purchase failed.")
        compare(find("storeError").color, Theme.red)
        compare(find("storeError").textStyle, "footnote")
        verify(placeOf(find("storeError")).y > placeOf(find("storeStatus")).y)
        verify(placeOf(find("storeStatus")).y > placeOf(plans()[1]).y)
        verify(placeOf(find("restore")).y > placeOf(find("storeError")).y)
        standIns.appStoreSubscriptions.statusMessage = undefined
        standIns.appStoreSubscriptions.errorMessage = undefined
        compare(find("storeStatus"), null)
        compare(find("storeError"), null)
    }
    function test_theModelsErrorIsNotShownHere() {
        standIns.appModel.errorMessage = "Something failed."
        showWith()
        compare(findText("Something failed."), null)
    }
    function test_restore() {
        showWith()
        const button = find("restore")
        compare([button.text, button.symbol, button.enabled, button.busy], ["Restore", "arrow.clockwise", true, false])
        verify(!(button instanceof ProminentButton))
        click(button)
        compare(standIns.appStoreSubscriptions.restored, 1)
    }
    function test_restoreSpinsAndIsDisabledWhileItRuns() {
        standIns.appStoreSubscriptions.isRestoringPurchases = true
        showWith()
        compare([find("restore").enabled, find("restore").busy], [false, true])
        click(find("restore"))
        compare(standIns.appStoreSubscriptions.restored, 0)
        standIns.appStoreSubscriptions.isRestoringPurchases = false
        compare([find("restore").enabled, find("restore").busy], [true, false])
    }
    function test_buttonGoesBelowThePriceWhereItHasNoRoom() {
        plan(1, { priceLine: "A price that takes more room than is left beside its button" })
        standIns.appModel.account = standIns.account
        show({ width: 420, height: 540 })
        const row = plans()[1]
        verify(placeOf(find("subscribe", row)).y > placeOf(find("priceLine", row)).y)
        const first = plans()[0]
        verify(placeOf(find("subscribe", first)).x > placeOf(find("priceLine", first)).x)
    }
    function test_tabGoesInReadingOrder() {
        showWith()
        compare(focusChain().map(item => item.objectName).filter(name => name !== ""), ["manageBilling", "subscribe", "subscribe", "restore"])
    }
    function test_whatTakesTheFocusComesIntoView() {
        standIns.appModel.account = standIns.account
        show({ width: 420, height: 300 })
        const restore = find("restore")
        restore.forceActiveFocus(Qt.TabFocusReason)
        const place = placeOf(restore)
        verify(place.y >= 0 && place.y + place.height <= 300)
    }
}
