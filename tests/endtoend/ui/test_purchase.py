"""Buying and restoring plans in the demo's App Store."""

import json

import pytest

from harness.waiting import wait_until

PRODUCTS = [{'id': 'tarnwik.sub.monthly', 'period': 'P1M', 'display_prices': {'USA': '$14.99'}},
            {'id': 'tarnwik.sub.yearly', 'period': 'P1Y', 'display_prices': {'USA': '$119.00'}}]


def configure(home, outcome='success', products=None, purchase=300, **more):
    """Writes how the store behaves from now on."""
    home.store_folder.mkdir(parents=True, exist_ok=True)
    configuration = {'storefront': 'USA', 'products': PRODUCTS if products is None else products,
                     'next_purchase': {'outcome': outcome, **more},
                     'delays_ms': {'products': 100, 'purchase': purchase, 'sync': 200}}
    target = home.store_folder / 'configuration.json'
    (home.store_folder / 'new').write_text(json.dumps(configuration), encoding='utf-8')
    (home.store_folder / 'new').rename(target)


@pytest.fixture(name='account')
def account_fixture(home, request):
    """The Account screen, over a store that answers quickly."""
    configure(home)
    application = request.getfixturevalue('signed_in')
    application.find('list item', 'Account').press()
    application.find(name='demo@tarnwik.example')
    wait_until(lambda: len(subscribe_buttons(application)) == 2 and subscribe_buttons(application)[0].is_enabled,
               'the products')
    return application


def subscribe_buttons(application):
    """The buttons of the plans, in their order."""
    return application.window().all('push button', 'Subscribe')


def test_buying_a_plan_makes_it_active_and_changes_the_account(account):
    account.find(name='200 GB')
    account.find(name='Not active')
    subscribe_buttons(account)[0].press()
    wait_until(lambda: not account.has(name='Not active'), 'the plan to be active')
    account.find(name='500 GB')
    account.find(name='Monthly subscription is active.', matches=lambda node: node.role == 'label')
    assert len(subscribe_buttons(account)) == 1


def test_a_plan_cannot_be_bought_twice_at_once(account, home):
    configure(home, purchase=2500)
    yearly = subscribe_buttons(account)[1]
    yearly.press()
    wait_until(lambda: not yearly.is_enabled, 'the button to be disabled')
    assert subscribe_buttons(account)[0].is_enabled
    wait_until(lambda: account.has(name='1000 GB'), 'the plan to be bought')


def test_a_pending_purchase_is_told_and_becomes_active_once_it_is_approved(account, home):
    configure(home, 'pending')
    subscribe_buttons(account)[0].press()
    account.find(name='Purchase is pending approval.')
    account.find(name='Not active')
    home.control('--demo', 'store', 'approve')
    wait_until(lambda: not account.has(name='Not active'), 'the plan to be active')
    # The service learns of it when the purchase is passed on.
    account.find(name='200 GB')
    account.find('push button', 'Restore').press()
    account.find(name='500 GB')


def test_a_cancelled_purchase_changes_nothing(account, home):
    configure(home, 'cancelled')
    subscribe_buttons(account)[0].press()
    wait_until(lambda: not subscribe_buttons(account)[0].is_enabled, 'the purchase to begin')
    wait_until(lambda: subscribe_buttons(account)[0].is_enabled, 'the purchase to be over')
    assert not account.has('alert message')
    account.find(name='Not active')


def test_a_failing_purchase_is_told(account, home):
    configure(home, 'failing', message='The card was refused.')
    subscribe_buttons(account)[1].press()
    account.find('alert message', 'The card was refused.')
    configure(home)
    subscribe_buttons(account)[1].press()
    account.find(name='1000 GB')
    wait_until(lambda: not account.has('alert message'), 'the error to be gone')


def test_what_was_bought_elsewhere_is_restored(account, home):
    account.find('push button', 'Restore').press()
    account.find(name='No active App Store subscription was found.')
    home.control('--demo', 'store', 'purchase', 'yearly')
    wait_until(lambda: not account.has(name='Not active'), 'the purchase of another device')
    button = account.find('push button', 'Restore')
    wait_until(lambda: button.is_enabled, 'Restore to be enabled')
    button.press()
    account.find(name='Purchases restored.')


def test_a_plan_that_is_not_sold_is_unavailable(home, request):
    configure(home, products=PRODUCTS[:1])
    application = request.getfixturevalue('signed_in')
    application.find('list item', 'Account').press()
    assert not application.find('push button', 'Unavailable').is_enabled
    assert len(subscribe_buttons(application)) == 1


def test_a_store_whose_files_are_broken_is_told(account, home):
    (home.store_folder / 'configuration.json').write_text('{', encoding='utf-8')
    subscribe_buttons(account)[0].press()
    text = account.find('alert message').name
    assert 'configuration.json' in text, text
