"""What is missing or broken while a person works: told in its place, and over when its cause is."""

import pytest

from conftest import sign_in
from harness.service import Service, free_port
from harness.waiting import wait_until

EMAIL = 'demo@tarnwik.example'


def error_text(application):
    shown = application.window().all('alert message')
    return shown[0].name if shown else None


def signed_in_at(start, url):
    application = start()
    sign_in(application, EMAIL, 'demo', url)
    application.find('combo box', 'Exit node')
    wait_until(lambda: application.find('push button', 'Connect').is_enabled, 'Connect to be enabled')
    return application


def press_when_enabled(application, name):
    button = application.find('push button', name)
    wait_until(lambda: button.is_enabled, f'{name} to be enabled')
    button.press()


def test_a_server_that_dies_is_told_and_forgotten_once_it_lives(start):
    port = free_port()
    service = Service(port=port)
    application = signed_in_at(start, service.url)
    service.close()
    press_when_enabled(application, 'Refresh')
    wait_until(lambda: error_text(application) == 'Could not connect to the server.', 'the error')
    # What was there stays, and stays usable.
    application.find('list item', 'Helsinki 1')
    assert application.find('combo box', 'Exit node').is_enabled

    service = Service(port=port)
    try:
        # The new service keeps nothing of the old one: the session is gone, and that is what is told.
        press_when_enabled(application, 'Refresh')
        wait_until(lambda: error_text(application) != 'Could not connect to the server.', 'the other error')
        application.find('list item', 'Settings').press()
        application.find('push button', 'Sign Out').press()
        sign_in(application, EMAIL, 'demo')
        application.find('list item', 'Connect').press()
        application.find('combo box', 'Exit node')
        assert error_text(application) is None
    finally:
        service.close()


def test_each_way_a_server_can_fail_is_told_and_passes(start, proxy):
    application = signed_in_at(start, proxy.url)
    for way in ('500', 'garbage', 'close'):
        proxy.behaviour = lambda method, path, way=way: way
        press_when_enabled(application, 'Refresh')
        text = wait_until(lambda: error_text(application), f'the error of a server that answers {way}')
        assert text.endswith('.') and len(text) > 15, text
        proxy.release()
        press_when_enabled(application, 'Refresh')
        wait_until(lambda: error_text(application) is None, 'the error to be gone')


def test_without_a_keyring_connecting_says_so_and_the_rest_works(start, service):
    application = signed_in_at(start, service.url)
    press_when_enabled(application, 'Connect')
    text = wait_until(lambda: error_text(application), 'the error')
    assert 'keychain' in text.lower() or 'keyring' in text.lower(), text
    press_when_enabled(application, 'Refresh')
    wait_until(lambda: error_text(application) is None, 'the error to be gone')
    wait_until(lambda: application.find('push button', 'Connect').is_enabled, 'Connect to be enabled')


@pytest.mark.parametrize('is_bus_there, told', [(False, 'The system message bus cannot be reached.'),
                                                (True, 'NetworkManager is not running.')])
def test_without_networkmanager_connecting_says_so_and_the_rest_works(start, home, service, keyring, is_bus_there,
                                                                      told):
    if is_bus_there:
        home.environment['DBUS_SYSTEM_BUS_ADDRESS'] = home.environment['DBUS_SESSION_BUS_ADDRESS']
    application = signed_in_at(start, service.url)
    press_when_enabled(application, 'Connect')
    wait_until(lambda: error_text(application) == told, 'the error')
    press_when_enabled(application, 'Refresh')
    wait_until(lambda: error_text(application) is None, 'the error to be gone')
    wait_until(lambda: application.find('push button', 'Connect').is_enabled, 'Connect to be enabled')
    assert keyring.process.poll() is None
