"""The whole job without a pointer, and without any help from assistive technology: keys in, screens read."""

from conftest import sign_in
from harness import keyboard
from harness.waiting import stays_true, wait_until


def focus_by_tab(application, name, backwards=False):
    """Presses Tab until the thing of that name has the focus."""
    for _ in range(40):
        node = application.focused()
        if node and node.name == name:
            return node
        application.press_tab('shift+Tab' if backwards else 'Tab')
    raise AssertionError(f'Tab never comes to {name!r}')


def headings(application):
    return {seen.name for seen in application.window().seen(is_brief=True) if seen.role == 'heading'}


def test_the_whole_job(demo):
    # The server is filled in: the person begins with the e-mail.
    wait_until(lambda: demo.focused() and demo.focused().name == 'Email', 'the e-mail field to have the focus')
    keyboard.type_text('demo@tarnwik.example')
    keyboard.press_key('Tab')
    keyboard.type_text('demo')
    keyboard.press_key('Return')
    demo.find('combo box', 'Exit node')

    focus_by_tab(demo, 'Exit node')
    keyboard.press_key('space')
    demo.find('list item', 'Netherlands · Rotterdam 1')
    keyboard.press_key('Down', 'Return')
    picker = demo.find('combo box', 'Exit node')
    wait_until(lambda: picker.description == 'Netherlands · Rotterdam 1', 'the choice')

    wait_until(lambda: demo.find('push button', 'Connect').is_enabled, 'Connect to be enabled')
    focus_by_tab(demo, 'Connect')
    keyboard.press_key('Return')
    wait_until(lambda: 'Connected' in headings(demo), 'the tunnel to be up')
    # The focus stays on the control through its forms.
    wait_until(lambda: demo.focused() and demo.focused().name == 'Disconnect', 'the focus to stay')
    keyboard.press_key('Return')
    wait_until(lambda: 'Disconnected' in headings(demo), 'the tunnel to be down')

    keyboard.press_key('ctrl+2')
    demo.find(name='demo@tarnwik.example')
    wait_until(lambda: demo.has('push button', 'Subscribe', lambda node: node.is_enabled), 'the products')
    focus_by_tab(demo, 'Subscribe')
    keyboard.press_key('space')
    wait_until(lambda: demo.has(name='500 GB'), 'the plan')

    keyboard.press_key('ctrl+3')
    demo.find('push button', 'Sign Out')
    focus_by_tab(demo, 'Sign Out')
    keyboard.press_key('Return')
    wait_until(lambda: demo.focused() and demo.focused().name == 'Email', 'the sign-in screen')
    keyboard.press_key('ctrl+q')
    assert demo.wait_for_end() == 0


def test_tab_goes_in_reading_order_on_the_sign_in_screen(demo):
    demo.find(name='Email')
    order = []
    for _ in range(8):
        node = wait_until(demo.focused, 'something to have the focus')
        if order and node.name == order[0]:
            break
        order.append(node.name)
        demo.press_tab()
    # Sign In cannot be pressed yet.
    assert order == ['Email', 'Password', 'Menu', 'Server URL']


def test_shortcuts_of_connect_and_disconnect(signed_in):
    # The keys of the other action do nothing, also while the tunnel goes up.
    keyboard.press_key('ctrl+shift+d', 'ctrl+shift+c', 'ctrl+shift+d')
    wait_until(lambda: 'Connected' in headings(signed_in), 'the tunnel to be up')
    keyboard.press_key('ctrl+shift+c')
    stays_true(lambda: 'Connected' in headings(signed_in), 'shortcuts without effect')
    wait_until(lambda: signed_in.find('push button', 'Disconnect').is_enabled, 'Disconnect to be enabled')
    keyboard.press_key('ctrl+shift+d')
    wait_until(lambda: 'Disconnected' in headings(signed_in), 'the tunnel to be down')


def test_the_shortcut_of_refresh_asks_the_server(start, proxy):
    application = start()
    keyboard.press_key('ctrl+r')
    sign_in(application, 'demo@tarnwik.example', 'demo', proxy.url)
    wait_until(lambda: application.has('push button', 'Connect', lambda node: node.is_enabled), 'the Connect screen')
    assert proxy.requests[0][1].endswith('/session')
    before = proxy.count('/nodes')
    keyboard.press_key('ctrl+r')
    wait_until(lambda: proxy.count('/nodes') == before + 1, 'the refresh')


def test_escape_closes_the_picker_and_changes_nothing(signed_in):
    focus_by_tab(signed_in, 'Exit node')
    keyboard.press_key('space')
    signed_in.find('list item', 'Japan · Osaka 1')
    keyboard.press_key('Down', 'Escape')
    wait_until(lambda: not signed_in.has('list item', 'Japan · Osaka 1'), 'the list to be closed')
    assert signed_in.find('combo box', 'Exit node').description == 'Finland · Helsinki 1'
    assert signed_in.focused().name == 'Exit node'


def test_the_application_menu(signed_in):
    focus_by_tab(signed_in, 'Menu')
    keyboard.press_key('Return')
    wait_until(lambda: signed_in.has('menu item', 'Quit'), 'the menu')
    items = [seen for seen in signed_in.window().seen() if seen.role == 'menu item']
    assert [item.name for item in items] == ['Open Dashboard', 'Connect', 'Refresh', 'Settings', 'Sign Out', 'Quit']
    assert [item.description for item in items] == ['Ctrl+0', 'Ctrl+Shift+C', 'Ctrl+R', '', '', 'Ctrl+Q']
    assert all(item.is_enabled for item in items)
    keyboard.press_key('Escape')
    wait_until(lambda: not signed_in.has('menu item', 'Quit'), 'the menu to be closed')
    keyboard.press_key('Return')
    wait_until(lambda: signed_in.has('menu item', 'Quit'), 'the menu')
    keyboard.press_key('Down', 'Down', 'Down', 'Return')
    signed_in.window('Settings')


def test_a_menu_that_is_left_is_closed_and_does_not_keep_the_keys(signed_in):
    focus_by_tab(signed_in, 'Menu')
    keyboard.press_key('Return')
    wait_until(lambda: signed_in.has('menu item', 'Quit'), 'the menu')
    # As a screen reader does.
    row = signed_in.find('list item', 'Account')
    row.act('SetFocus')
    wait_until(lambda: not signed_in.has('menu item', 'Quit'), 'the menu to be closed')
    stays_true(lambda: row.is_focused, 'the focus where it was put')
    keyboard.press_key('ctrl+3')
    signed_in.find('heading', 'Settings')


def test_the_application_menu_of_nobody(demo):
    demo.find(name='Menu').press()
    demo.find('menu item', 'Quit')
    enabled = {seen.name: seen.is_enabled for seen in demo.window().seen() if seen.role == 'menu item'}
    assert enabled == {'Open Dashboard': True, 'Connect': False, 'Refresh': False, 'Settings': True, 'Sign Out': False,
                       'Quit': True}


def test_the_sections_are_chosen_with_arrow_keys(signed_in):
    focus_by_tab(signed_in, 'Connect', backwards=False)
    row = next(node for node in signed_in.window().all('list item', 'Connect'))
    while not row.is_focused:
        signed_in.press_tab()
    keyboard.press_key('Down')
    signed_in.find(name='demo@tarnwik.example')
    wait_until(lambda: signed_in.focused().name == 'Account', 'the focus to follow')
    keyboard.press_key('Down')
    signed_in.find('link', 'Email support')
