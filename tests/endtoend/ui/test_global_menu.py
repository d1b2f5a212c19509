"""The application menu on desktops that show the menus of all programs in one bar."""

from gi.repository import Gio, GLib
import pytest

from harness import keyboard
from harness.bus import Bus
from harness.waiting import wait_until

NAME = 'com.canonical.AppMenu.Registrar'
PATH = '/com/canonical/AppMenu/Registrar'
MENU = 'com.canonical.dbusmenu'

DESCRIPTION = '''<node><interface name="com.canonical.AppMenu.Registrar">
<method name="RegisterWindow"><arg type="u" direction="in"/><arg type="o" direction="in"/></method>
<method name="UnregisterWindow"><arg type="u" direction="in"/></method>
</interface></node>'''


class Registrar:
    """Whom programs tell where the menus of their windows are."""

    def __init__(self):
        self.menus = {}
        self.bus = Bus()
        interface = Gio.DBusNodeInfo.new_for_xml(DESCRIPTION).interfaces[0]
        self.bus.in_thread(lambda: self.bus.connection.register_object(PATH, interface, self._called, None, None))

    def appear(self):
        self.bus.call_bus('RequestName', GLib.Variant('(su)', (NAME, 0)))

    def _called(self, _connection, sender, _path, _interface, method, arguments, invocation):
        window = arguments[0]
        if method == 'RegisterWindow':
            self.menus[window] = (sender, arguments[1])
        else:
            self.menus.pop(window, None)
        invocation.return_value(None)

    def layout(self):
        """The one window's menu bar."""
        wait_until(lambda: self.menus, 'a window’s menu')
        name, path = next(iter(self.menus.values()))
        arguments = GLib.Variant('(iias)', (0, -1, []))
        return self.bus.call(name, path, MENU, 'GetLayout', arguments)[1]

    def items(self):
        """The items of the one menu: title, keys, whether it is enabled; only "---" for a separator."""
        menu = self.layout()[2][0]
        assert menu[1]['label'] == 'Tarnwik'
        return [item(properties) for _, properties, _ in menu[2]]


def item(properties):
    if properties.get('type') == 'separator':
        return '---'
    keys = '+'.join(properties.get('shortcut', [[]])[0])
    return properties['label'], keys, properties.get('enabled', True)


SIGNED_OUT = [('Open Dashboard', 'Control+0', True), '---', ('Connect', 'Control+Shift+C', False), '---',
              ('Refresh', 'Control+R', False), ('Settings', '', True), '---', ('Sign Out', '', False), '---',
              ('Quit', 'Control+Q', True)]


@pytest.fixture(name='registrar')
def registrar_fixture():
    registrar = Registrar()
    yield registrar
    registrar.bus.close()


def test_the_menu_is_given_to_the_desktop_and_the_keys_stay_the_windows(registrar, start):
    registrar.appear()
    application = start('--demo')
    assert registrar.items() == SIGNED_OUT
    keyboard.press_key('ctrl+q')
    wait_until(lambda: application.process.poll() is not None, 'the program to end')


def test_a_bar_that_comes_later_gets_the_menu_too(registrar, start):
    start('--demo')
    assert not registrar.menus
    registrar.appear()
    assert registrar.items() == SIGNED_OUT
