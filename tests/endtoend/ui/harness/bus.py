"""A connection to the session bus whose calls are answered by a thread of its own."""

import os
import threading

from gi.repository import Gio, GLib


class Bus:
    """The main thread of a test calls and waits; what others call here is answered meanwhile."""

    def __init__(self):
        self._context = GLib.MainContext()
        self._loop = GLib.MainLoop.new(self._context, False)
        self._thread = threading.Thread(target=self._run, daemon=True)
        self._ready = threading.Event()
        self._thread.start()
        self._ready.wait()

    def _run(self):
        self._context.push_thread_default()
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self.connection = Gio.DBusConnection.new_for_address_sync(os.environ['DBUS_SESSION_BUS_ADDRESS'], flags)
        self.connection.set_exit_on_close(False)
        self._ready.set()
        self._loop.run()

    def in_thread(self, function):
        """Runs a function in the thread that answers, so that what it registers is answered there; its result."""
        result = []
        done = threading.Event()

        def run():
            result.append(function())
            done.set()
            return GLib.SOURCE_REMOVE

        source = GLib.idle_source_new()
        source.set_callback(lambda *_: run())
        source.attach(self._context)
        assert done.wait(10)
        return result[0]

    def call(self, name, path, interface, method, arguments=None):
        """Calls a method and waits for what it answers."""
        return self.connection.call_sync(name, path, interface, method, arguments, None,
                                         Gio.DBusCallFlags.NO_AUTO_START, 8000).unpack()

    def call_bus(self, method, arguments):
        return self.call('org.freedesktop.DBus', '/org/freedesktop/DBus', 'org.freedesktop.DBus', method, arguments)

    def has_owner(self, name):
        """Whether somebody has the name."""
        return self.call_bus('NameHasOwner', GLib.Variant('(s)', (name,)))[0]

    def close(self):
        self.connection.close_sync()
        self._loop.quit()
        self._thread.join(5)
