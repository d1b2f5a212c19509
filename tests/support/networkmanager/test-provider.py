#!/usr/bin/python3
"""A NetworkManager VPN service for tests: plays a packet-tunnel provider, well behaved or not.

What it does is read from $NM_FIXTURE_DIR/provider-mode at each call:

  ok              brings up a tun device after 30 ms
  slow            the same, after 1.5 s
  secrets         the same as ok, but needs the private key; leaves its SHA-256 in $NM_FIXTURE_DIR/provider-key
  wg              needs the private key, and carries real packets through wireguard-go as the tunnel profile says
  reconnect       as ok, and connects anew once, 0.2 s after it was connected, with another address
  login-failed    fails 50 ms later: the server refuses the login
  connect-failed  fails 50 ms later: the server cannot be reached
  bad-arguments   refuses the call itself
  bad-config      brings up a tunnel without naming its gateway
  crash           ends 50 ms later without a word
  hang            never gets anywhere

Its log, in $NM_FIXTURE_DIR/log/provider.log, holds no secrets.
"""

import argparse
import hashlib
import os
import sys
import time

from gi.repository import Gio, GLib

from provider_tunnel import TunDevice, WireGuardTunnel, example_configuration, profile_configuration

INTERFACE = 'org.freedesktop.NetworkManager.VPN.Plugin'
PATH = '/org/freedesktop/NetworkManager/VPN/Plugin'
BAD_ARGUMENTS = 'org.freedesktop.NetworkManager.VPN.Error.BadArguments'
INTERACTIVE_NOT_SUPPORTED = 'org.freedesktop.NetworkManager.VPN.Error.InteractiveNotSupported'
DIRECTORY = os.environ['NM_FIXTURE_DIR']
KEY = 'client_private_key'
LINGER_SECONDS = 5

# NMVpnServiceState
INIT, STARTING, STARTED, STOPPING, STOPPED = 1, 3, 4, 5, 6
# NMVpnPluginFailure
LOGIN_FAILED, CONNECT_FAILED = 0, 1

INTROSPECTION = f'''<node><interface name="{INTERFACE}">
  <method name="Connect"><arg type="a{{sa{{sv}}}}" direction="in"/></method>
  <method name="ConnectInteractive">
    <arg type="a{{sa{{sv}}}}" direction="in"/><arg type="a{{sv}}" direction="in"/></method>
  <method name="NeedSecrets"><arg type="a{{sa{{sv}}}}" direction="in"/><arg type="s" direction="out"/></method>
  <method name="NewSecrets"><arg type="a{{sa{{sv}}}}" direction="in"/></method>
  <method name="Disconnect"/>
  <method name="SetConfig"><arg type="a{{sv}}" direction="in"/></method>
  <method name="SetIp4Config"><arg type="a{{sv}}" direction="in"/></method>
  <method name="SetIp6Config"><arg type="a{{sv}}" direction="in"/></method>
  <method name="SetFailure"><arg type="s" direction="in"/></method>
  <property name="State" type="u" access="read"/>
  <signal name="StateChanged"><arg type="u"/></signal>
  <signal name="SecretsRequired"><arg type="s"/><arg type="as"/></signal>
  <signal name="Config"><arg type="a{{sv}}"/></signal>
  <signal name="Ip4Config"><arg type="a{{sv}}"/></signal>
  <signal name="Ip6Config"><arg type="a{{sv}}"/></signal>
  <signal name="LoginBanner"><arg type="s"/></signal>
  <signal name="Failure"><arg type="u"/></signal>
</interface></node>'''


def mode():
    try:
        with open(os.path.join(DIRECTORY, 'provider-mode'), encoding='utf-8') as file:
            return file.read().strip() or 'ok'
    except FileNotFoundError:
        return 'ok'


def log(*words):
    with open(os.path.join(DIRECTORY, 'log', 'provider.log'), 'a', encoding='utf-8') as file:
        print(f'{time.time():.3f} [{os.getpid()}]', *words, file=file)


class Provider:
    """The service's one object on the bus, and the tunnel that it holds."""

    def __init__(self, bus, loop):
        self._bus = bus
        self._loop = loop
        self._state = INIT
        self._vpn = {}
        self._tunnel = None
        self._has_reconnected = False
        self._end = None
        interface = Gio.DBusNodeInfo.new_for_xml(INTROSPECTION).interfaces[0]
        bus.register_object(PATH, interface, self._on_call, self._on_get_property, None)

    def stop(self):
        """Takes the tunnel down. Like other services this one stays for a while: the next tunnel may come at once, and
        the daemon would ask a service that is about to end."""
        if self._state not in (INIT, STOPPED):
            self._set_state(STOPPING)
            self._close_tunnel()
            self._set_state(STOPPED)
        self._cancel_end()
        self._end = GLib.timeout_add_seconds(LINGER_SECONDS, self._loop.quit)

    def end(self):
        """Takes the tunnel down and ends the program."""
        self.stop()
        self._loop.quit()

    def _cancel_end(self):
        if self._end is not None:
            GLib.source_remove(self._end)
            self._end = None

    def _on_get_property(self, _bus, _sender, _path, _interface, _name):
        return GLib.Variant('u', self._state)

    def _on_call(self, _bus, _sender, _path, _interface, method, arguments, invocation):
        log(method, mode())
        values = arguments.unpack()
        vpn = values[0].get('vpn', {}) if method in ('Connect', 'ConnectInteractive', 'NeedSecrets') else {}
        if method == 'NeedSecrets':
            is_missing = mode() in ('secrets', 'wg') and KEY not in vpn.get('secrets', {})
            invocation.return_value(GLib.Variant('(s)', ('vpn' if is_missing else '',)))
        elif method == 'ConnectInteractive':
            invocation.return_dbus_error(INTERACTIVE_NOT_SUPPORTED, 'Nothing is asked while connecting.')
        elif method == 'Connect':
            self._connect(vpn, invocation)
        else:
            if method == 'Disconnect':
                self.stop()
            elif method == 'SetFailure':
                self._fail(CONNECT_FAILED)
            invocation.return_value(None)

    def _connect(self, vpn, invocation):
        if mode() == 'bad-arguments':
            invocation.return_dbus_error(BAD_ARGUMENTS, 'The profile is malformed.')
            return
        self._cancel_end()
        self._vpn = vpn
        self._has_reconnected = False
        self._set_state(STARTING)
        invocation.return_value(None)
        if mode() == 'login-failed':
            GLib.timeout_add(50, self._fail, LOGIN_FAILED)
        elif mode() == 'connect-failed':
            GLib.timeout_add(50, self._fail, CONNECT_FAILED)
        elif mode() == 'crash':
            GLib.timeout_add(50, os._exit, 3)
        elif mode() != 'hang':
            GLib.timeout_add(1500 if mode() == 'slow' else 30, self._bring_up)

    def _bring_up(self):
        if self._state != STARTING:
            return GLib.SOURCE_REMOVE
        try:
            general, ip4, ip6 = self._open_tunnel()
        except Exception as error:
            log('cannot bring the tunnel up:', repr(error))
            self._fail(CONNECT_FAILED)
            return GLib.SOURCE_REMOVE
        general['has-ip4'] = GLib.Variant('b', ip4 is not None)
        general['has-ip6'] = GLib.Variant('b', ip6 is not None)
        self._emit('Config', GLib.Variant('(a{sv})', (general,)))
        if ip4 is not None:
            self._emit('Ip4Config', GLib.Variant('(a{sv})', (ip4,)))
        if ip6 is not None:
            self._emit('Ip6Config', GLib.Variant('(a{sv})', (ip6,)))
        self._set_state(STARTED)
        if mode() == 'reconnect' and not self._has_reconnected:
            self._has_reconnected = True
            GLib.timeout_add(200, self._reconnect)
        return GLib.SOURCE_REMOVE

    def _open_tunnel(self):
        """Gives the three dictionaries that the daemon is told: in general, for IPv4, for IPv6."""
        if mode() == 'wg':
            profile = self._vpn['data']['tunnel_profile_json']
            tunnel_configuration = profile_configuration(profile)
            self._tunnel = WireGuardTunnel(profile, self._vpn['secrets'][KEY])
            return tunnel_configuration
        if mode() == 'secrets':
            digest = hashlib.sha256(self._vpn['secrets'][KEY].encode()).hexdigest()
            with open(os.path.join(DIRECTORY, 'provider-key'), 'w', encoding='utf-8') as file:
                file.write(digest)
        if self._tunnel is None:
            self._tunnel = TunDevice()
        # The daemon takes notice of a new connection only if its address is another.
        general, ip4, ip6 = example_configuration('10.77.0.3/32' if self._has_reconnected else '10.77.0.2/32')
        if mode() == 'bad-config':
            del general['gateway']
        return general, ip4, ip6

    def _reconnect(self):
        if self._state == STARTED:
            self._set_state(STARTING)
            GLib.timeout_add(200, self._bring_up)
        return GLib.SOURCE_REMOVE

    def _fail(self, failure):
        self._emit('Failure', GLib.Variant('(u)', (failure,)))
        self.stop()
        return GLib.SOURCE_REMOVE

    def _close_tunnel(self):
        if self._tunnel is not None:
            self._tunnel.close()
            self._tunnel = None

    def _set_state(self, state):
        self._state = state
        self._emit('StateChanged', GLib.Variant('(u)', (state,)))

    def _emit(self, signal, value):
        self._bus.emit_signal(None, PATH, INTERFACE, signal, value)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('--service', required=True)
    parser.add_argument('--bus-name', help='what the daemon wants the service to be called, if not by its own name')
    options, _ = parser.parse_known_args()

    loop = GLib.MainLoop()
    bus = Gio.bus_get_sync(Gio.BusType.SYSTEM)
    provider = Provider(bus, loop)

    def on_name_lost(*_):
        log('has lost its name')
        loop.quit()

    Gio.bus_own_name_on_connection(bus, options.bus_name or options.service, Gio.BusNameOwnerFlags.DO_NOT_QUEUE,
                                   None, on_name_lost)
    # A provider does not outlive its daemon.
    Gio.bus_watch_name_on_connection(bus, 'org.freedesktop.NetworkManager', Gio.BusNameWatcherFlags.NONE, None,
                                     lambda *_: provider.end())
    loop.run()
    return 0


if __name__ == '__main__':
    sys.exit(main())
