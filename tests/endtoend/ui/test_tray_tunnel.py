"""The tray's menu over a tunnel that the program has not started, and that nobody is signed in for."""

import json

from harness.waiting import stays_true, wait_until


class Tunnel:
    """The demo's tunnel in a home, as another program left it behind; nobody is signed in there any longer."""

    def __init__(self, home):
        self._home = home
        folder = home.folder / 'data/tarnwik/demo'
        self._file = folder / 'vpn/tunnel.json'
        home.control('--demo', 'sign-in', '--email', 'demo@tarnwik.example', typed='demo\n')
        home.control('--demo', 'connect')
        defaults = folder / 'defaults.json'
        kept = json.loads(defaults.read_text(encoding='utf-8'))
        del kept['TarnwikAuthToken']
        defaults.write_text(json.dumps(kept), encoding='utf-8')

    @property
    def status(self):
        """What tarnwikctl says of it."""
        lines = self._home.control('--demo', 'status').splitlines()
        return next(line.split()[1] for line in lines if line.startswith('Tunnel'))

    def send(self, is_up):
        """Sends it up or down long ago, so that it has arrived, and in a way that no program is told of: the embedded
        tunnel watches for new files in the folder, and this is the same file."""
        node = self._file.stat().st_ino
        state = json.loads(self._file.read_text(encoding='utf-8'))
        self._file.write_text(json.dumps({**state, 'going_up': is_up, 'sent_at_ms': 0}), encoding='utf-8')
        assert self._file.stat().st_ino == node


def test_a_tunnel_that_is_up_at_the_start_is_told_before_the_menu_is_opened(tray, start, home):
    Tunnel(home)
    application = start('--demo')
    item = tray.item()
    wait_until(lambda: item.labels()[0] == 'Connected', 'the tunnel that is up')
    assert item.labels() == ['Connected', '---', 'Disconnect', 'Refresh', '---', 'Open Tarnwik', 'Settings',
                             'Sign Out', '---', 'Quit']
    enabled = {label: item.is_enabled(label) for label in ('Disconnect', 'Refresh', 'Sign Out')}
    assert enabled == {'Disconnect': True, 'Refresh': False, 'Sign Out': False}
    assert application.has(name='Email'), 'nobody is signed in'


def test_the_tunnel_is_disconnected_from_the_menu_by_nobody_in_particular(tray, start, home):
    tunnel = Tunnel(home)
    application = start('--demo')
    item = tray.item()
    wait_until(lambda: item.labels()[0] == 'Connected', 'the tunnel that is up')
    item.press('Disconnect')
    wait_until(lambda: item.labels()[0] == 'Disconnected', 'the tunnel to be down')
    assert not item.is_enabled('Connect')
    assert application.has(name='Email')
    assert tunnel.status == 'Disconnected'


def test_each_time_that_it_is_opened_the_menu_asks_for_the_tunnels_status(tray, start, home):
    tunnel = Tunnel(home)
    start('--demo')
    item = tray.item()
    shown = 'Connected'
    wait_until(lambda: item.labels()[0] == shown, 'the tunnel that is up')
    for is_up in (False, True, False, True):
        tunnel.send(is_up)
        # Whatever else asks would show it now.
        stays_true(lambda label=shown: item.labels()[0] == label, 'what the program knew', 0.4)
        shown = 'Connected' if is_up else 'Disconnected'
        item.open()
        wait_until(lambda label=shown: item.labels()[0] == label, f'{shown}, now that the menu is open')
        item.close()
    assert item.is_enabled('Disconnect')


def test_a_menu_that_was_never_told_to_be_closed_asks_again_all_the_same(tray, start, home):
    tunnel = Tunnel(home)
    start('--demo')
    item = tray.item()
    wait_until(lambda: item.labels()[0] == 'Connected', 'the tunnel that is up')
    for is_up, label in ((False, 'Disconnected'), (True, 'Connected')):
        tunnel.send(is_up)
        item.open()
        wait_until(lambda label=label: item.labels()[0] == label, f'{label}, now that the menu is open')
