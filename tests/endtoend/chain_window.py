"""The customer of chain-customer.sh at the window: does what each line of standard input asks for, and answers "done"."""

import os
import sys
from pathlib import Path
from types import SimpleNamespace

sys.path.insert(0, str(Path(__file__).parent))
os.environ.setdefault('TARNWIKCTL_PROGRAM', '')

from harness import keyboard
from harness.application import Application
from harness.waiting import wait_until


def shows(application, status):
    return lambda: application.has('heading', status)


def sign_in(application):
    for name, text in (('Server URL', os.environ['CHAIN_URL']), ('Email', 'ada@example.com'),
                       ('Password', 'correct horse')):
        keyboard.fill(application.find(name=name), text)
    keyboard.press_key('Return')
    wait_until(shows(application, 'Not configured'), 'the Connect screen')


def connect(application):
    application.find('push button', 'Connect', lambda button: button.is_enabled).press()
    wait_until(shows(application, 'Connected'), 'the tunnel to be up', 20)


def disconnect(application):
    application.find('push button', 'Disconnect', lambda button: button.is_enabled).press()
    wait_until(shows(application, 'Disconnected'), 'the tunnel to be down', 20)


def sign_out(application):
    keyboard.press_key('ctrl+3')
    application.find('push button', 'Sign Out').press()
    application.find(name='Email')


STEPS = {'sign-in': sign_in, 'connect': connect, 'disconnect': disconnect, 'sign-out': sign_out}

# In the customer's own folders, which the terminal's commands see too.
home = SimpleNamespace(folder=Path(os.environ['HOME']),
                       environment=dict(os.environ, QT_LINUX_ACCESSIBILITY_ALWAYS_ON='1'))
window = Application(home)
try:
    window.open()
    for line in sys.stdin:
        STEPS[line.strip()](window)
        print('done', flush=True)
finally:
    window.close()
sys.exit(f'The program complained: {window.messages}' if window.messages else 0)
