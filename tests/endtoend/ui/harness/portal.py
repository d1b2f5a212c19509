"""The desktop's portal, which tells programs how the user wants them to look."""

from gi.repository import Gio, GLib

from .bus import Bus

NAME = 'org.freedesktop.portal.Desktop'
PATH = '/org/freedesktop/portal/desktop'
INTERFACE = 'org.freedesktop.portal.Settings'

APPEARANCE = 'org.freedesktop.appearance'
DESKTOP = 'org.gnome.desktop.interface'
# Of the colour scheme.
NO_PREFERENCE, DARK, LIGHT = (GLib.Variant('u', value) for value in (0, 1, 2))

DESCRIPTION = '''<node><interface name="org.freedesktop.portal.Settings">
<method name="ReadAll"><arg type="as" direction="in"/><arg type="a{sa{sv}}" direction="out"/></method>
<signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
</interface></node>'''


class Portal:
    """Owns the portal's name on the bus, with settings as they are given: by space and key."""

    def __init__(self, settings):
        self.settings = settings
        self.bus = Bus()
        interface = Gio.DBusNodeInfo.new_for_xml(DESCRIPTION).interfaces[0]
        self.bus.in_thread(lambda: self.bus.connection.register_object(PATH, interface, self._called, None, None))
        self.bus.call_bus('RequestName', GLib.Variant('(su)', (NAME, 0)))

    def change(self, space, key, value):
        """Changes a setting, and tells everybody."""
        self.settings.setdefault(space, {})[key] = value
        self.bus.connection.emit_signal(None, PATH, INTERFACE, 'SettingChanged',
                                        GLib.Variant('(ssv)', (space, key, value)))

    def close(self):
        self.bus.close()

    def _called(self, _connection, _sender, _path, _interface, _method, arguments, invocation):
        asked = {space: self.settings[space] for space in arguments[0] if space in self.settings}
        invocation.return_value(GLib.Variant('(a{sa{sv}})', (asked,)))
