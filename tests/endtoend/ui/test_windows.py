"""Windows: the one of Settings, a second start, and the place on the screen."""

import json
import re

import pytest

from conftest import sign_in
from harness import keyboard
from harness.application import Application, Home
from harness.waiting import stays_true, wait_until


def test_settings_while_signed_out(demo):
    keyboard.fill(demo.find(name='Server URL'), 'https://typed.example')
    keyboard.press_key('ctrl+comma')
    settings = demo.window('Settings')
    settings.find(name='https://typed.example')
    refresh, sign_out = settings.find('push button', 'Refresh'), settings.find('push button', 'Sign Out')
    assert refresh.is_enabled and sign_out.is_enabled
    settings.find('link', 'Email support')
    settings.find(name='Tarnwik enforces account, payment, quota, and abuse policy using metadata only.')
    refresh.press()
    sign_out.press()
    stays_true(lambda: demo.has(name='Email') and refresh.is_enabled and sign_out.is_enabled, 'nothing to happen')


def test_sign_out_in_the_settings_window_ends_the_dashboard(signed_in):
    keyboard.press_key('ctrl+comma')
    signed_in.window('Settings').find('push button', 'Sign Out').press()
    signed_in.find(name='Server URL')


def test_settings_opens_once_and_closes(demo):
    for _ in range(2):
        demo.activate()
        keyboard.press_key('ctrl+comma')
        wait_until(lambda: keyboard.active_window() in demo.screen_windows('Settings'), 'Settings in front')
    assert len(demo.screen_windows('Settings')) == 1
    keyboard.press_key('ctrl+w')
    wait_until(lambda: not demo.screen_windows('Settings'), 'Settings to be gone')
    assert demo.is_running and demo.screen_windows()


def test_a_second_start_raises_the_first(demo, home):
    keyboard.press_key('ctrl+comma')
    demo.screen_window('Settings')
    wait_until(lambda: keyboard.active_window() in demo.screen_windows('Settings'), 'Settings in front')
    second = Application(home, '--demo')
    assert second.wait_for_end() == 0
    assert second.messages == ''
    wait_until(lambda: keyboard.active_window() in demo.screen_windows(), 'the main window in front')
    assert len(demo.screen_windows()) == 1


def test_the_demo_and_the_program_run_side_by_side(demo, start):
    other = start()
    assert demo.screen_windows() and other.screen_windows()
    assert demo.process_id != other.process_id


def test_the_window_keeps_its_place(start, service):
    application = start()
    keyboard.put(application.screen_window(), 120, 90, 700, 600)
    wait_until(lambda: keyboard.place(application.screen_window())[2:] == (700, 600), 'the new size')
    expected = keyboard.place(application.screen_window())
    assert application.quit() == 0
    again = start()
    wait_until(lambda: keyboard.place(again.screen_window()) == expected, f'the window at {expected}')
    sign_in(again, 'demo@tarnwik.example', 'demo', service.url)
    again.find('combo box', 'Exit node')
    defaults = (again.home.folder / 'config/tarnwik/defaults.json').read_text(encoding='utf-8')
    assert '700' not in defaults and 'width' not in json.loads(defaults)


@pytest.mark.parametrize('kept', ['nonsense', json.dumps({'x': 30000, 'y': -20000, 'width': 9999, 'height': 3,
                                                         'isMaximized': False})])
def test_a_place_that_makes_no_sense_is_mended(home, start, kept):
    file = home.folder / 'state/tarnwik/window.json'
    file.parent.mkdir(parents=True)
    file.write_text(kept, encoding='utf-8')
    application = start()
    left, top, width, height = keyboard.place(application.screen_window())
    # The window manager puts its frame around what fits the screen.
    frame = 40
    assert left >= 0 and top >= 0 and left + width <= 1280 + frame and top + height <= 960 + frame
    assert width >= 420 and height >= 540


def test_the_window_cannot_be_too_small(demo):
    window = demo.screen_window()
    keyboard.ask_for_size(window, 200, 200)
    wait_until(lambda: keyboard.place(window)[2:] == (420, 540), 'the smallest size')


def test_the_window_cannot_be_too_small_for_the_dashboard_either(signed_in):
    window = signed_in.screen_window()
    for section in ('Connect', 'Account', 'Settings'):
        signed_in.find('list item', section).press()
        signed_in.find('heading', section)
        for asked, smallest in (((200, 200), (420, 540)), ((200, 700), (420, 700)), ((800, 200), (800, 540))):
            keyboard.ask_for_size(window, *asked)
            wait_until(lambda size=smallest: keyboard.place(window)[2:] == size, f'{smallest} instead of {asked}')


def test_the_folded_sidebar_works_as_the_wide_one_does(signed_in):
    window = signed_in.screen_window()
    keyboard.put(window, 50, 50, 420, 540)
    row = signed_in.find('list item', 'Account')
    wait_until(lambda: row.box[2] < 60, 'the sidebar to be folded')
    row.press()
    signed_in.find(name='demo@tarnwik.example')


def test_two_users_of_the_demo_do_not_meet(demo, tmp_path_factory, start):
    """The session has one demo: another home's start raises the window that is there."""
    other = Home(tmp_path_factory.mktemp('other'))
    second = Application(other, '--demo')
    assert second.wait_for_end() == 0
    assert len(demo.screen_windows()) == 1
    assert not (other.folder / 'data/tarnwik').exists()


def test_links_are_opened_by_the_desktop(signed_in, home):
    signed_in.find('list item', 'Account').press()
    signed_in.find('push button', 'Manage billing').press()
    wait_until(lambda: home.opened == ['https://billing.tarnwik.example/portal'], 'the billing portal')
    signed_in.find('list item', 'Settings').press()
    signed_in.find('link', 'Email support').press()
    wait_until(lambda: len(home.opened) == 2, 'the mail program')
    assert re.fullmatch(r'mailto:[a-z]+@[a-z.]+', home.opened[1])
