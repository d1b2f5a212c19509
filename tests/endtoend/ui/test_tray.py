"""The menu-bar extra, as the desktop's panel sees it over the bus."""

from harness import keyboard
from harness.application import Application
from harness.tray import Tray
from harness.waiting import stays_true, wait_until

from conftest import sign_in

CAPTIONS = ['Finland · Helsinki 1', 'Netherlands · Rotterdam 1', 'Switzerland · Zurich 1', 'Canada · Montreal 1',
            'Japan · Osaka 1']


def signed_in_with_item(tray, start):
    application = start('--demo')
    item = tray.item()
    sign_in(application, 'demo@tarnwik.example', 'demo')
    wait_until(lambda: item.is_enabled('Connect'), 'Connect in the tray')
    return application, item


def test_signed_out_the_menu_offers_only_what_can_be_done(tray, start):
    start('--demo')
    item = tray.item()
    assert item.labels() == ['Not configured', '---', 'Connect', 'Refresh', '---', 'Open Tarnwik', 'Settings',
                             'Sign Out', '---', 'Quit']
    enabled = {label: item.is_enabled(label) for label in item.labels() if label != '---'}
    assert enabled == {'Not configured': False, 'Connect': False, 'Refresh': False, 'Open Tarnwik': True,
                       'Settings': True, 'Sign Out': False, 'Quit': True}


def test_signed_in_the_menu_tells_status_usage_and_node(tray, start):
    _, item = signed_in_with_item(tray, start)
    wait_until(lambda: 'Exit Node' in item.labels(), 'the exit nodes')
    assert item.labels() == ['Not configured', '806.1 MB of 200 GB', 'Finland · Helsinki 1', '---', 'Connect',
                             'Exit Node', 'Refresh', '---', 'Open Tarnwik', 'Settings', 'Sign Out', '---', 'Quit']
    assert all(item.is_enabled(label) for label in ('Connect', 'Exit Node', 'Refresh', 'Sign Out'))


def test_the_exit_node_is_chosen_in_the_submenu(tray, start):
    application, item = signed_in_with_item(tray, start)
    item.open_submenu('Exit Node')
    wait_until(lambda: item.entry_or_none('Exit Node', CAPTIONS[0]), 'the submenu')
    entries = [entry for entry in item.entries() if len(entry['path']) == 2]
    assert [entry['path'][1] for entry in entries] == CAPTIONS
    assert {entry['toggle'] for entry in entries} == {'radio'}
    assert [entry['isOn'] for entry in entries] == [True, False, False, False, False]
    item.press('Exit Node', CAPTIONS[4])
    wait_until(lambda: CAPTIONS[4] in item.labels(), 'the node line')
    assert application.find('combo box', 'Exit node').description == CAPTIONS[4]


def test_the_menu_connects_and_disconnects(tray, start):
    application, item = signed_in_with_item(tray, start)
    item.press('Connect')
    menu = []

    def is_connecting():
        menu[:] = [entry for entry in item.entries() if len(entry['path']) == 1]
        return menu[0]['path'] == ('Connecting',)

    wait_until(is_connecting, 'the tunnel to go up')
    # The status line and the action, which says the same; neither can be pressed, nor another node be chosen.
    assert [entry['enabled'] for entry in menu if entry['path'] == ('Connecting',)] == [False, False]
    assert [entry['enabled'] for entry in menu if entry['path'] == ('Exit Node',)] == [False]
    wait_until(lambda: 'Connected' in item.labels(), 'the tunnel to be up')
    wait_until(lambda: item.is_enabled('Disconnect'), 'Disconnect to be enabled')
    assert not item.is_enabled('Exit Node')
    application.find('push button', 'Disconnect')
    item.press('Disconnect')
    wait_until(lambda: 'Disconnected' in item.labels(), 'the tunnel to be down')
    wait_until(lambda: item.is_enabled('Exit Node'), 'the exit nodes to be free again')


def test_the_usage_line_follows(tray, start):
    _, item = signed_in_with_item(tray, start)
    item.press('Connect')
    wait_until(lambda: 'Connected' in item.labels(), 'the tunnel to be up')
    before = item.labels()[1]

    def has_moved():
        item.press('Refresh')
        return item.labels()[1] != before

    wait_until(has_moved, 'the usage to move', step=0.3)


def test_menu_and_screen_are_disabled_alike_while_the_program_is_busy(tray, start, proxy):
    application = start()
    item = tray.item()
    sign_in(application, 'demo@tarnwik.example', 'demo', proxy.url)
    wait_until(lambda: item.is_enabled('Connect'), 'Connect in the tray')
    proxy.hold('/nodes')
    item.press('Refresh')
    wait_until(lambda: not item.is_enabled('Refresh'), 'Refresh to be disabled')
    assert not item.is_enabled('Connect')
    assert not item.is_enabled('Sign Out')
    assert item.is_enabled('Exit Node')
    wait_until(lambda: not application.find('push button', 'Connect').is_enabled, 'the screen’s Connect to be disabled')
    assert application.find('combo box', 'Exit node').is_enabled
    proxy.release()
    wait_until(lambda: item.is_enabled('Refresh'), 'Refresh to be enabled')


def test_sign_out_from_the_menu(tray, start):
    application, item = signed_in_with_item(tray, start)
    item.press('Sign Out')
    application.find(name='Server URL')
    wait_until(lambda: 'Exit Node' not in item.labels() and not item.is_enabled('Refresh'), 'the menu of nobody')


def test_closing_the_window_leaves_the_program_in_the_tray(tray, start):
    application = start('--demo')
    item = tray.item()
    application.activate()
    keyboard.press_key('ctrl+w')
    wait_until(lambda: not application.screen_windows(), 'the window to be gone')
    stays_true(lambda: application.is_running, 'the program in the tray')
    item.press('Open Tarnwik')
    application.screen_window()
    application.find(name='Email')
    keyboard.press_key('ctrl+w')
    wait_until(lambda: not application.screen_windows(), 'the window to be gone')
    item.activate()
    application.screen_window()


def test_settings_open_from_the_menu(tray, start):
    application = start('--demo')
    tray.item().press('Settings')
    application.window('Settings').find('push button', 'Refresh')


def test_quit_from_the_menu_ends_the_program(tray, start):
    application = start('--demo')
    tray.item().press('Quit')
    assert application.wait_for_end() == 0


def test_a_tray_that_goes_and_comes_back_gets_the_icon_again(start):
    application = start('--demo')
    for _ in range(2):
        tray = Tray()
        try:
            assert 'Quit' in tray.item().labels()
        finally:
            tray.close()
    stays_true(lambda: application.is_running, 'the program without a tray')


def test_without_a_tray_closing_the_last_window_ends_the_program(start):
    application = start('--demo')
    application.activate()
    keyboard.press_key('ctrl+comma')
    application.screen_window('Settings')
    application.activate()
    keyboard.press_key('ctrl+w')
    wait_until(lambda: not application.screen_windows(), 'the main window to be gone')
    stays_true(lambda: application.is_running, 'the program with its Settings window')
    application.activate('Settings')
    keyboard.press_key('ctrl+w')
    assert application.wait_for_end() == 0


def test_a_second_start_raises_the_window_from_the_tray(tray, start, home):
    application = start('--demo')
    tray.item()
    keyboard.press_key('ctrl+w')
    wait_until(lambda: not application.screen_windows(), 'the window to be gone')
    second = Application(home, '--demo')
    assert second.wait_for_end() == 0
    application.screen_window()
