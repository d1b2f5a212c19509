"""A panel with a place for tray icons, and the icon's menu as the panel sees it."""

from gi.repository import Gio, GLib

from .bus import Bus
from .waiting import wait_until

NAME = 'org.kde.StatusNotifierWatcher'
PATH = '/StatusNotifierWatcher'
ITEM = 'org.kde.StatusNotifierItem'
MENU = 'com.canonical.dbusmenu'
PROPERTIES = 'org.freedesktop.DBus.Properties'
REPLACE_NOTHING = 4

DESCRIPTION = '''<node><interface name="org.kde.StatusNotifierWatcher">
<method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
<method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
<property name="RegisteredStatusNotifierItems" type="as" access="read"/>
<property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
<property name="ProtocolVersion" type="i" access="read"/>
<signal name="StatusNotifierItemRegistered"><arg type="s"/></signal>
<signal name="StatusNotifierItemUnregistered"><arg type="s"/></signal>
<signal name="StatusNotifierHostRegistered"/>
</interface></node>'''


class Tray:
    """Owns the watcher's name on the bus, and keeps the icons that register with it."""

    def __init__(self):
        self.items = []
        self.bus = Bus()
        interface = Gio.DBusNodeInfo.new_for_xml(DESCRIPTION).interfaces[0]
        self.bus.in_thread(
            lambda: self.bus.connection.register_object(PATH, interface, self._called, self._asked, None))
        answer = self.bus.call_bus('RequestName', GLib.Variant('(su)', (NAME, REPLACE_NOTHING)))
        assert answer[0] == 1, 'there is a tray already'

    def _called(self, connection, sender, _path, interface, method, arguments, invocation):
        if method == 'RegisterStatusNotifierItem':
            name = arguments[0]
            self.items.append((sender, name) if name.startswith('/') else (name, '/StatusNotifierItem'))
            connection.emit_signal(None, PATH, interface, 'StatusNotifierItemRegistered', GLib.Variant('(s)', (name,)))
        invocation.return_value(None)

    def _asked(self, _connection, _sender, _path, _interface, name):
        return {'RegisteredStatusNotifierItems': GLib.Variant('as', [name + path for name, path in self.items]),
                'IsStatusNotifierHostRegistered': GLib.Variant('b', True),
                'ProtocolVersion': GLib.Variant('i', 0)}[name]

    def item(self):
        """The icon of the program, as soon as it is there."""
        wait_until(lambda: self.items, 'the tray icon')
        return TrayItem(self.bus, *self.items[-1])

    def close(self):
        self.bus.close()


class TrayItem:
    """One icon, and its menu."""

    def __init__(self, bus, name, path):
        self.bus, self.name, self.path = bus, name, path

    def properties(self):
        """What the icon tells the panel."""
        return self.bus.call(self.name, self.path, PROPERTIES, 'GetAll', GLib.Variant('(s)', (ITEM,)))[0]

    def activate(self):
        """A click on the icon."""
        self.bus.call(self.name, self.path, ITEM, 'Activate', GLib.Variant('(ii)', (0, 0)))

    def open(self):
        """Opens the menu, as a panel does before it shows it."""
        self._menu('AboutToShow', GLib.Variant('(i)', (0,)))

    def close(self):
        """Closes the menu again."""
        self._menu('Event', GLib.Variant('(isvu)', (0, 'closed', GLib.Variant('i', 0), 0)))

    def entries(self):
        """All entries, those of submenus after their parent, with the labels that lead there and what is set."""
        found = []

        def walk(entry, parents):
            number, properties, children = entry
            label = properties.get('label', '').replace('__', '\0').replace('_', '').replace('\0', '_')
            if properties.get('type') == 'separator':
                label = '---'
            if number and properties.get('visible', True):
                found.append({'id': number, 'path': (*parents, label), 'enabled': properties.get('enabled', True),
                              'toggle': properties.get('toggle-type'), 'isOn': properties.get('toggle-state') == 1,
                              'hasChildren': bool(children)})
            for child in children:
                walk(child, (*parents, label) if number else ())

        walk(self._menu('GetLayout', GLib.Variant('(iias)', (0, -1, [])))[1], ())
        return found

    def labels(self):
        """The menu's first level, from top to bottom."""
        return [entry['path'][0] for entry in self.entries() if len(entry['path']) == 1]

    def entry_or_none(self, *path):
        return next((entry for entry in self.entries() if entry['path'] == path), None)

    def entry(self, *path):
        """One entry, as soon as there is one."""
        return wait_until(lambda: self.entry_or_none(*path), f'the tray menu’s entry {path}')

    def is_enabled(self, *path):
        return self.entry(*path)['enabled']

    def open_submenu(self, *path):
        """Opens a submenu, as a panel does before it shows it."""
        number = self.entry(*path)['id']
        self._menu('Event', GLib.Variant('(isvu)', (number, 'opened', GLib.Variant('i', 0), 0)))
        self._menu('AboutToShow', GLib.Variant('(i)', (number,)))

    def press(self, *path):
        """Chooses an entry."""
        number = self.entry(*path)['id']
        self._menu('Event', GLib.Variant('(isvu)', (number, 'clicked', GLib.Variant('i', 0), 0)))

    def _menu(self, method, arguments):
        return self.bus.call(self.name, self.properties()['Menu'], MENU, method, arguments)
