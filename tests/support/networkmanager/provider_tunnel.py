"""The tunnels that the test provider brings up, and what the daemon is told of them."""

import fcntl
import ipaddress
import json
import os
import socket
import struct
import subprocess
import time

from gi.repository import GLib

DEVICE = 'twtun0'

TUNSETIFF = 0x400454CA
IFF_TUN_WITHOUT_PACKET_INFORMATION = 0x1001


class TunDevice:
    """A tun device that nobody reads from."""

    def __init__(self):
        self._file = os.open('/dev/net/tun', os.O_RDWR | os.O_NONBLOCK)
        request = struct.pack('16sH14s', DEVICE.encode(), IFF_TUN_WITHOUT_PACKET_INFORMATION, b'')
        fcntl.ioctl(self._file, TUNSETIFF, request)

    def close(self):
        os.close(self._file)


class WireGuardTunnel:
    """wireguard-go, set up as a tunnel profile says. The profile's AmneziaWG parameters mean nothing to it."""

    def __init__(self, profile_json, private_key):
        peer = json.loads(profile_json)['peer']
        self._process = subprocess.Popen(['wireguard-go', '--foreground', DEVICE], stderr=subprocess.DEVNULL,
                                         env={'LOG_LEVEL': 'error', 'PATH': os.environ['PATH']})
        try:
            self._await_socket()
            self._configure(peer, private_key)
        except BaseException:
            self.close()
            raise

    def close(self):
        self._process.terminate()
        self._process.wait()

    def _await_socket(self):
        deadline = time.monotonic() + 5
        while not os.path.exists(f'/run/wireguard/{DEVICE}.sock'):
            if self._process.poll() is not None or time.monotonic() > deadline:
                raise RuntimeError('wireguard-go did not start')
            time.sleep(0.01)

    @staticmethod
    def _configure(peer, private_key):
        command = ['wg', 'set', DEVICE, 'private-key', '/dev/stdin', 'peer', peer['public_key'],
                   'endpoint', peer['endpoint'], 'allowed-ips', ','.join(peer['allowed_ips'])]
        if peer['persistent_keepalive']:
            command += ['persistent-keepalive', str(peer['persistent_keepalive'])]
        # Keys go through pipes: a command line is everybody's to read.
        read_end, write_end = os.pipe()
        try:
            if peer['preshared_key']:
                os.write(write_end, peer['preshared_key'].encode())
                command += ['preshared-key', f'/dev/fd/{read_end}']
            os.close(write_end)
            subprocess.run(command, input=private_key.encode(), pass_fds=[read_end], check=True,
                           stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        finally:
            os.close(read_end)


def example_configuration(address):
    """A tunnel to nowhere from address: general, IPv4 and IPv6 dictionaries."""
    general = {'tundev': GLib.Variant('s', DEVICE), 'gateway': GLib.Variant('u', _ip4('192.0.2.1')),
               'mtu': GLib.Variant('u', 1400)}
    return general, _ip4_configuration(address, ['10.77.0.0/24'], []), None


def profile_configuration(profile_json):
    """What a tunnel profile says, as the daemon wants it: general, IPv4 and IPv6 dictionaries."""
    profile = json.loads(profile_json)
    interface, peer = profile['interface'], profile['peer']
    general = {'tundev': GLib.Variant('s', DEVICE), 'mtu': GLib.Variant('u', interface['mtu'])}
    gateway = _endpoint_address(peer['endpoint'])
    if gateway.version == 4:
        general['gateway'] = GLib.Variant('u', _ip4(gateway))
    else:
        general['gateway'] = GLib.Variant('ay', gateway.packed)

    address4, address6 = (_first_of(version, interface['addresses']) for version in (4, 6))
    routes4, routes6 = (_all_of(version, peer['allowed_ips']) for version in (4, 6))
    dns4, dns6 = (_all_of(version, interface['dns']) for version in (4, 6))
    return (general, _ip4_configuration(address4, routes4, dns4) if address4 else None,
            _ip6_configuration(address6, routes6, dns6) if address6 else None)


def _ip4_configuration(address, routes, dns):
    interface = ipaddress.ip_interface(address)
    networks, is_default = _networks(routes)
    return {'address': GLib.Variant('u', _ip4(interface.ip)),
            'prefix': GLib.Variant('u', interface.network.prefixlen),
            'routes': GLib.Variant('aau', [[_ip4(route.network_address), route.prefixlen, 0, 0]
                                           for route in networks]),
            'dns': GLib.Variant('au', [_ip4(_host(server)) for server in dns]),
            'never-default': GLib.Variant('b', not is_default)}


def _ip6_configuration(address, routes, dns):
    interface = ipaddress.ip_interface(address)
    networks, is_default = _networks(routes)
    nowhere = bytes(16)
    return {'address': GLib.Variant('ay', interface.ip.packed),
            'prefix': GLib.Variant('u', interface.network.prefixlen),
            'routes': GLib.Variant('a(ayuayu)', [(route.network_address.packed, route.prefixlen, nowhere, 0)
                                                 for route in networks]),
            'dns': GLib.Variant('aay', [_host(server).packed for server in dns]),
            'never-default': GLib.Variant('b', not is_default)}


def _networks(routes):
    """The routes that are not the default route, and whether that is among them."""
    networks = [ipaddress.ip_network(route, strict=False) for route in routes]
    return [network for network in networks if network.prefixlen], any(not n.prefixlen for n in networks)


def _all_of(version, addresses):
    return [address for address in addresses if ipaddress.ip_interface(address).version == version]


def _first_of(version, addresses):
    return next(iter(_all_of(version, addresses)), None)


def _host(address):
    return ipaddress.ip_interface(address).ip


def _ip4(address):
    """An IPv4 address as the daemon's API has it: in network byte order, seen as a native integer."""
    return struct.unpack('=I', ipaddress.IPv4Address(address).packed)[0]


def _endpoint_address(endpoint):
    host = endpoint.rpartition(':')[0].strip('[]')
    return ipaddress.ip_address(socket.getaddrinfo(host, None, type=socket.SOCK_DGRAM)[0][4][0])
