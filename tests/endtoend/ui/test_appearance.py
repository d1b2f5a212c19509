"""The program looks as the user wants all programs of the desktop to look, also when that changes while it runs."""

import pytest
from gi.repository import GLib

from harness import keyboard
from harness.portal import APPEARANCE, DARK, DESKTOP, LIGHT, NO_PREFERENCE, Portal
from harness.screen import brightness, colour_at
from harness.waiting import wait_until


@pytest.fixture(name='portal')
def portal_fixture():
    portal = Portal({APPEARANCE: {'color-scheme': NO_PREFERENCE}})
    yield portal
    portal.close()


def is_dark(application):
    return brightness(application.screen_window()) < 0.3


def is_light(application):
    return brightness(application.screen_window()) > 0.8


def test_the_window_is_dark_from_the_start_where_that_is_wanted(portal, start):
    portal.settings[APPEARANCE]['color-scheme'] = DARK
    application = start('--demo')
    assert is_dark(application)


def test_the_colour_scheme_changes_while_the_program_runs(portal, start):
    application = start('--demo')
    assert is_light(application)
    portal.change(APPEARANCE, 'color-scheme', DARK)
    wait_until(lambda: is_dark(application), 'a dark window')
    keyboard.press_key('ctrl+comma')
    settings = application.screen_window('Settings')
    wait_until(lambda: brightness(settings) < 0.3, 'a dark Settings window')
    for scheme in (LIGHT, DARK, NO_PREFERENCE):
        portal.change(APPEARANCE, 'color-scheme', scheme)
        wait_until(lambda: (is_dark if scheme is DARK else is_light)(application), 'the window to follow')
    wait_until(lambda: brightness(settings) > 0.8, 'a light Settings window')


def test_text_grows_as_the_user_wants_it(portal, start):
    application = start('--demo')
    button = application.find('push button', 'Sign In')
    height = button.box[3]
    portal.change(DESKTOP, 'text-scaling-factor', GLib.Variant('d', 1.5))
    wait_until(lambda: button.box[3] >= round(1.4 * height), 'a larger button')
    portal.change(DESKTOP, 'text-scaling-factor', GLib.Variant('d', 1.0))
    wait_until(lambda: button.box[3] == height, 'the button as it was')


def test_the_accent_colour_is_the_users(portal, start):
    application = start('--demo')
    keyboard.fill(application.find(name='Email'), 'a')
    keyboard.fill(application.find(name='Password'), 'b')
    button = application.find('push button', 'Sign In')
    wait_until(lambda: button.is_enabled, 'Sign In to be enabled')
    red, _, blue = button_colour(application, button)
    assert blue > red
    portal.change(APPEARANCE, 'accent-color', GLib.Variant('(ddd)', (0.8, 0.1, 0.1)))

    def is_red():
        red, _, blue = button_colour(application, button)
        return red > blue + 0.2

    wait_until(is_red, 'a red button')


def button_colour(application, button):
    """Of the fill, beside the button's text."""
    left, top, _, height = button.box
    return colour_at(left + 6, top + height // 2)
