"""A Secret Service, as it comes and goes."""

import os
import subprocess

from .bus import Bus
from .processes import ENDS_WITH_TESTS
from .waiting import wait_until

NAME = 'org.freedesktop.secrets'


class Keyring:
    """A real gnome-keyring with an unlocked keyring of its own."""

    def __init__(self, folder):
        home = folder / 'keyring'
        for part in ('share/keyrings', 'run'):
            (home / part).mkdir(parents=True)
        environment = dict(os.environ, HOME=str(home), XDG_DATA_HOME=str(home / 'share'),
                           XDG_RUNTIME_DIR=str(home / 'run'))
        self.process = subprocess.Popen(
            [*ENDS_WITH_TESTS, 'gnome-keyring-daemon', '--foreground', '--components=secrets', '--unlock'],
            env=environment, stdin=subprocess.PIPE, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.process.stdin.write(b'tarnwik')
        self.process.stdin.close()
        self.bus = Bus()
        wait_until(lambda: self.bus.has_owner(NAME), 'the keyring on the bus')

    def close(self):
        self.process.terminate()
        self.process.wait(10)
        wait_until(lambda: not self.bus.has_owner(NAME), 'the keyring to be gone')
        self.bus.close()
