"""Signing in at a real service, and what goes wrong there."""

import pytest

from conftest import sign_in
from harness import keyboard
from harness.service import Service, free_port
from harness.waiting import stays_true, wait_until

EMAIL = 'demo@tarnwik.example'


def error_text(application):
    """The error that the main window shows, or None."""
    shown = application.window().all('alert message')
    return shown[0].name if shown else None


def field(application, name):
    return application.find(name=name)


def test_a_wrong_password_is_told_and_the_right_one_signs_in(start, service):
    application = start()
    sign_in(application, EMAIL, 'wrong', service.url)
    assert wait_until(lambda: error_text(application), 'the error') == 'invalid credentials'
    assert field(application, 'Server URL').text == service.url
    assert field(application, 'Email').text == EMAIL

    keyboard.fill(field(application, 'Password'), 'demo')
    wait_until(lambda: field(application, 'Sign In').is_enabled, 'Sign In to be enabled')
    application.find('push button', 'Sign In').press()
    application.find('push button', 'Connect')
    assert not application.has(name='Server URL')
    assert error_text(application) is None


def test_the_fields_do_not_move_when_an_error_appears(start, service):
    application = start()
    before = [field(application, name).box for name in ('Server URL', 'Email', 'Password', 'Sign In')]
    sign_in(application, EMAIL, 'wrong', service.url)
    wait_until(lambda: error_text(application), 'an error')
    assert [field(application, name).box for name in ('Server URL', 'Email', 'Password', 'Sign In')] == before


def test_sign_in_waits_for_email_and_password(start):
    application = start()
    button = application.find('push button', 'Sign In')
    assert not button.is_enabled
    keyboard.fill(field(application, 'Email'), EMAIL)
    assert not button.is_enabled
    keyboard.fill(field(application, 'Password'), ' ')
    wait_until(lambda: button.is_enabled, 'a password of one blank to be enough')
    keyboard.fill(field(application, 'Email'), '')
    keyboard.press_key('BackSpace')
    wait_until(lambda: not button.is_enabled, 'Sign In to be disabled without an e-mail')


def test_the_password_is_not_to_be_read(start):
    application = start()
    password = field(application, 'Password')
    keyboard.fill(password, 'secret')
    wait_until(lambda: password.is_focused, 'the password field to have the focus')
    assert password.holds_password and not field(application, 'Email').holds_password
    assert password.text in (None, '')
    assert 'secret' not in ' '.join(application.root.find().texts())


@pytest.mark.parametrize('address, text', [('', 'Enter a valid Tarnwik server URL.'),
                                           ('not an address', 'unsupported URL')])
def test_an_address_that_is_none_is_told(start, address, text):
    application = start()
    keyboard.fill(field(application, 'Server URL'), address)
    if not address:
        keyboard.press_key('BackSpace')
    sign_in(application, EMAIL, 'demo')
    wait_until(lambda: error_text(application), 'an error')
    assert error_text(application) == text


def test_clear_text_to_another_host_is_refused(start):
    application = start()
    sign_in(application, EMAIL, 'demo', 'http://192.0.2.1')
    wait_until(lambda: error_text(application), 'an error')
    assert 'App Transport Security' in error_text(application)


def test_a_dead_server_is_told_and_forgotten_once_it_lives(start):
    port = free_port()
    application = start()
    sign_in(application, EMAIL, 'demo', f'http://127.0.0.1:{port}')
    wait_until(lambda: error_text(application), 'an error')
    assert error_text(application) == 'Could not connect to the server.'

    service = Service(port=port)
    try:
        application.find('push button', 'Sign In').press()
        application.find('push button', 'Connect')
        assert error_text(application) is None
    finally:
        service.close()


def test_a_slow_server_shows_that_it_works_and_takes_no_second_sign_in(start, proxy):
    application = start()
    proxy.hold('/session')
    sign_in(application, EMAIL, 'demo', proxy.url)
    button = application.find('push button', 'Sign In')
    wait_until(lambda: not button.is_enabled, 'Sign In to be disabled')
    field(application, 'Password').act('SetFocus')
    keyboard.press_key('Return')
    stays_true(lambda: proxy.count('/session') == 1 and not button.is_enabled, 'one sign-in at a time')
    proxy.release()
    application.find('push button', 'Connect')


def test_the_session_outlives_the_program(start, service, home):
    application = start()
    sign_in(application, EMAIL, 'demo', service.url)
    application.find('push button', 'Connect')
    assert application.quit() == 0

    again = start()
    again.find('combo box', 'Exit node')
    assert not again.has(name='Server URL')


def test_sign_out_during_the_first_refresh_leaves_no_error_behind(start, proxy):
    application = start()
    sign_in(application, EMAIL, 'demo', proxy.url)
    application.find('combo box', 'Exit node')
    assert application.quit() == 0

    proxy.hold('/nodes')
    seen = proxy.count('/nodes')
    again = start()
    wait_until(lambda: proxy.count('/nodes') > seen, 'the dashboard’s refresh to be under way')
    sign_out(again)
    proxy.release()
    stays_true(lambda: error_text(again) is None and again.has(name='Email'), 'a quiet sign-in screen', 1)
    assert field(again, 'Email').text == '' and field(again, 'Server URL').text == proxy.url
    sign_in(again, EMAIL, 'demo')
    again.find('push button', 'Sign Out')


def test_sign_out_during_a_refresh_that_was_asked_for_leaves_a_screen_that_works(start, proxy):
    application = start()
    sign_in(application, EMAIL, 'demo', proxy.url)
    application.find('combo box', 'Exit node')
    wait_until(lambda: application.find('push button', 'Connect').is_enabled, 'Connect to be enabled')
    proxy.hold('/nodes')
    seen = proxy.count('/nodes')
    application.find('push button', 'Refresh').press()
    wait_until(lambda: proxy.count('/nodes') > seen, 'the refresh to be under way')
    sign_out(application)
    proxy.release()
    # The refresh goes on, and fails without its session: that is told, and forgotten at the next attempt.
    wait_until(lambda: error_text(application) == 'unauthorized', 'the refresh to fail')
    sign_in(application, EMAIL, 'demo')
    # The chosen section outlives the session.
    application.find('list item', 'Connect').press()
    application.find('combo box', 'Exit node')
    assert error_text(application) is None


def sign_out(application):
    application.find('list item', 'Settings').press()
    application.find('push button', 'Sign Out').press()
    application.find(name='Server URL')
