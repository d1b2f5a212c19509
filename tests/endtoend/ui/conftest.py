"""What the tests of the application have in common. They run inside with-desktop.sh."""

import os

import pytest

from harness import keyboard
from harness.application import Application, Home
from harness.keyring import Keyring
from harness.service import Proxy, Service
from harness.tray import Tray
from harness.waiting import wait_until


def pytest_collection_modifyitems(config, items):
    """Leaves out what the other half does, where run.sh asks for one of two halves: they take about the same time."""
    wanted = os.environ.get('TARNWIK_TEST_HALF')
    if wanted is None:
        return
    halves, seconds = ([], []), [0, 0]
    for item in sorted(items, key=seconds_of, reverse=True):
        lighter = seconds.index(min(seconds))
        halves[lighter].append(item)
        seconds[lighter] += seconds_of(item)
    mine = halves[int(wanted) - 1]
    config.hook.pytest_deselected(items=[item for item in items if item not in mine])
    items[:] = [item for item in items if item in mine]


def seconds_of(item):
    """How long a test takes, about."""
    mark = item.get_closest_marker('takes')
    return mark.kwargs['seconds'] if mark else 2


@pytest.fixture(name='home')
def home_fixture(tmp_path):
    """A user who has never used the program."""
    return Home(tmp_path)


@pytest.fixture(name='start')
def start_fixture(home):
    """Starts the program with options and waits for its window; at the end it must go without a complaint."""
    started = []

    def start(*arguments, in_home=home):
        application = Application(in_home, *arguments)
        started.append(application)
        return application.open()

    yield start
    for application in reversed(started):
        application.close()
    for application in started:
        assert application.messages == ''


@pytest.fixture(name='demo')
def demo_fixture(start):
    """The program with all it needs inside, at its sign-in screen."""
    return start('--demo')


@pytest.fixture(name='signed_in')
def signed_in_fixture(demo):
    """The same on its Connect screen, with the demo account."""
    sign_in(demo, 'demo@tarnwik.example', 'demo')
    wait_until(lambda: demo.has('push button', 'Connect', lambda node: node.is_enabled), 'the Connect screen')
    return demo


@pytest.fixture(name='service')
def service_fixture():
    service = Service()
    yield service
    service.close()


@pytest.fixture(name='proxy')
def proxy_fixture(service):
    proxy = Proxy(service)
    yield proxy
    proxy.close()


@pytest.fixture(name='keyring')
def keyring_fixture(tmp_path):
    keyring = Keyring(tmp_path)
    yield keyring
    keyring.close()


@pytest.fixture(name='tray')
def tray_fixture():
    tray = Tray()
    yield tray
    tray.close()


@pytest.fixture(autouse=True)
def resting_pointer():
    """No test begins with the pointer over something."""
    keyboard.park_pointer()


def sign_in(application, email, password, server=None):
    """Fills in the sign-in screen and presses its button."""
    if server is not None:
        keyboard.fill(application.find(name='Server URL'), server)
    keyboard.fill(application.find(name='Email'), email)
    keyboard.fill(application.find(name='Password'), password)
    button = application.find('push button', 'Sign In')
    wait_until(lambda: button.is_enabled, 'Sign In to be enabled')
    button.press()
