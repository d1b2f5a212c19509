"""Every screen of the program in the states that matter, and the way there."""

import json
from dataclasses import dataclass
from typing import Callable

from conftest import sign_in
from harness import keyboard
from harness.waiting import wait_until


@dataclass(frozen=True)
class Screen:
    """A screen that can be brought up in the program."""

    name: str
    # Brings it up from where the program has just been started, and gives the window that shows it.
    bring_up: Callable
    # Whether somebody is signed in before.
    needs_session: bool = True


def _settled(application, title='Tarnwik'):
    """The window once all that it shows has come to rest."""
    window = application.window(title)
    last = []

    def is_at_rest():
        nonlocal last
        now = window.seen()
        is_same, last = now == last, now
        return is_same

    wait_until(is_at_rest, 'the screen to come to rest', step=0.15)
    return window


def sign_in_screen(application):
    application.find(name='Email')
    return _settled(application)


def sign_in_error(application):
    sign_in(application, 'demo@tarnwik.example', 'wrong')
    application.find('alert message')
    return _settled(application)


def sign_in_menu(application):
    application.find(name='Menu').press()
    application.find('menu item', 'Quit')
    return _settled(application)


def connect_screen(application):
    application.find('list item', 'Osaka 1')
    return _settled(application)


def connect_picker(application):
    application.find('combo box', 'Exit node').press()
    application.find('list item', 'Japan · Osaka 1')
    return _settled(application)


def connected(application):
    application.find('push button', 'Connect').press()
    application.find('push button', 'Disconnect')
    wait_until(lambda: application.find('push button', 'Disconnect').is_enabled, 'Disconnect to be enabled')
    return _settled(application)


def dashboard_menu(application):
    application.find(name='Menu').press()
    application.find('menu item', 'Quit')
    return _settled(application)


def account_screen(application):
    application.find('list item', 'Account').press()
    wait_until(lambda: len(application.window().all('push button', 'Subscribe')) == 2, 'the plans')
    wait_until(lambda: application.find('push button', 'Subscribe').is_enabled, 'the products')
    return _settled(application)


def account_bought(application):
    account_screen(application)
    application.find('push button', 'Subscribe').press()
    application.find(name='500 GB')
    return _settled(application)


def account_failed(application):
    store = application.home.store_folder
    store.mkdir(parents=True, exist_ok=True)
    product = {'id': 'tarnwik.sub.monthly', 'period': 'P1M', 'display_prices': {'USA': '$14.99'}}
    (store / 'configuration.json').write_text(json.dumps({
        'storefront': 'USA', 'products': [product],
        'next_purchase': {'outcome': 'failing', 'message': 'The card was refused.'}, 'delays_ms': {}}),
        encoding='utf-8')
    account_screen(application)
    application.find('push button', 'Subscribe').press()
    application.find('alert message', 'The card was refused.')
    return _settled(application)


def settings_screen(application):
    application.find('list item', 'Settings').press()
    application.find('link', 'Email support')
    return _settled(application)


def settings_window(application):
    application.activate()
    keyboard.press_key('ctrl+comma')
    application.activate('Settings')
    return _settled(application, 'Settings')


SCREENS = [
    Screen('sign-in', sign_in_screen, needs_session=False),
    Screen('sign-in-error', sign_in_error, needs_session=False),
    Screen('sign-in-menu', sign_in_menu, needs_session=False),
    Screen('settings-window-signed-out', settings_window, needs_session=False),
    Screen('connect', connect_screen),
    Screen('connect-picker', connect_picker),
    Screen('connect-connected', connected),
    Screen('dashboard-menu', dashboard_menu),
    Screen('account', account_screen),
    Screen('account-bought', account_bought),
    Screen('account-failed', account_failed),
    Screen('settings', settings_screen),
]


def bring_up(screen, application):
    """Signs in where that is needed, and brings up the screen; the window that shows it."""
    if screen.needs_session:
        sign_in(application, 'demo@tarnwik.example', 'demo')
        wait_until(lambda: application.has('push button', 'Connect', lambda node: node.is_enabled),
                   'the Connect screen')
    return screen.bring_up(application)
