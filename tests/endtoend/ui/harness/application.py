"""The program `tarnwik` in a home of its own."""

import os
import subprocess
import time
from pathlib import Path

from . import keyboard
from .accessible import application_of_process
from .processes import ENDS_WITH_TESTS
from .waiting import SLOWNESS, wait_until

PROGRAM = os.environ['TARNWIK_PROGRAM']
CONTROL_PROGRAM = os.environ['TARNWIKCTL_PROGRAM']
# The window system's libraries copy texts by their length, where the sanitizer would read on.
SANITIZER_OPTIONS = f'{os.environ.get("ASAN_OPTIONS", "")}:strict_string_checks=0'
POPUP_ROLES = {'dialog', 'popup menu'}


class Home:
    """A user's folders, all in one, and the environment that leads to them."""

    def __init__(self, folder):
        self.folder = Path(folder)
        programs = self.folder / 'bin'
        programs.mkdir()
        browser = programs / 'xdg-open'
        browser.write_text('#!/bin/sh\necho "$1" >>"$HOME/opened"\n', encoding='ascii')
        browser.chmod(0o755)
        self.environment = dict(os.environ, HOME=str(self.folder), XDG_CONFIG_HOME=str(self.folder / 'config'),
                                XDG_DATA_HOME=str(self.folder / 'data'), XDG_STATE_HOME=str(self.folder / 'state'),
                                XDG_CACHE_HOME=str(self.folder / 'cache'), QT_LINUX_ACCESSIBILITY_ALWAYS_ON='1',
                                LC_ALL='C.UTF-8', TZ='UTC', PATH=f'{programs}:{os.environ["PATH"]}')

    @property
    def store_folder(self):
        """Where the demo's App Store has its files."""
        return self.folder / 'data/tarnwik/demo/store'

    @property
    def opened(self):
        """The addresses that the program gave to the desktop to open."""
        file = self.folder / 'opened'
        return file.read_text(encoding='utf-8').split() if file.exists() else []

    def control(self, *arguments, typed=''):
        """Runs tarnwikctl beside the program; what it printed."""
        return subprocess.run([CONTROL_PROGRAM, *arguments], env=self.environment, check=True, capture_output=True,
                              input=typed, text=True, timeout=30 * SLOWNESS).stdout


class Application:
    """A running program: its windows, its end, and what it complained about."""

    def __init__(self, home, *arguments):
        self.home = home
        self.log = home.folder / f'messages-{time.monotonic_ns()}'
        environment = dict(home.environment, ASAN_OPTIONS=SANITIZER_OPTIONS)
        # Into a file: a pipe that the test holds would keep it from seeing the program's end.
        with open(self.log, 'wb') as log:
            self.process = subprocess.Popen([*ENDS_WITH_TESTS, PROGRAM, *arguments], env=environment,
                                            stdin=subprocess.DEVNULL, stdout=log, stderr=log)
        self.root = None

    @property
    def process_id(self):
        return self.process.pid

    @property
    def is_running(self):
        return self.process.poll() is None

    @property
    def messages(self):
        """All that the program has written to the terminal, but for what the sanitizer says of its own tools."""
        lines = self.log.read_text(errors='replace').splitlines()
        return '\n'.join(line for line in lines if 'external symbolizer' not in line)

    def open(self):
        """Waits for the main window."""
        def has_window():
            assert self.is_running, f'ended with {self.process.returncode}: {self.messages}'
            self.root = application_of_process(self.process_id)
            return self.root and self.root.children

        wait_until(has_window, 'the program’s first window', 15)
        self.activate()
        return self

    def window(self, title='Tarnwik'):
        """The accessible window of that title."""
        return wait_until(lambda: self.window_or_none(title), f'the window {title!r}')

    def window_or_none(self, title='Tarnwik'):
        """The same, if it is there now."""
        return next((node for node in self.root.children if node.name == title and node.is_shown), None)

    def screen_windows(self, title='Tarnwik'):
        """The windows of that title as the window system knows them."""
        return keyboard.windows_of(self.process_id, title)

    def screen_window(self, title='Tarnwik'):
        return wait_until(lambda: self.screen_windows(title), f'the window {title!r} on the screen')[0]

    def activate(self, title='Tarnwik'):
        """Gives the window the keyboard."""
        window = self.screen_window(title)
        wait_until(lambda: keyboard.active_window() == window or keyboard.activate(window), f'{title!r} to be active')

    def find(self, *arguments, **named):
        return self.window().find(*arguments, **named)

    def has(self, *arguments, **named):
        return self.window().has(*arguments, **named)

    def focused(self, in_window=None):
        """What has the keyboard's focus in a window, as it was seen, or None."""
        screen = (in_window or self.window()).seen(is_brief=True)
        return next((seen for seen in screen if seen.is_focused and seen.role != 'frame'), None)

    def press_tab(self, key='Tab', in_window=None):
        """Moves the focus on, or back with "shift+Tab"."""
        def place():
            seen = self.focused(in_window)
            return seen and seen.node

        before = place()
        keyboard.press_key(key)
        wait_until(lambda: place() not in (None, before), 'the focus to move')

    def resident_kilobytes(self):
        """How much memory the program holds."""
        with open(f'/proc/{self.process_id}/status', encoding='ascii') as status:
            return next(int(line.split()[1]) for line in status if line.startswith('VmRSS'))

    def wait_for_end(self, seconds=10):
        """The exit status."""
        return self.process.wait(seconds * SLOWNESS)

    def close_popups(self):
        """Closes an open menu or list of the main window, which keeps the keys to itself until it has faded away."""
        self.activate()
        keyboard.press_key('Escape')
        wait_until(lambda: POPUP_ROLES.isdisjoint(seen.role for seen in self.window().seen(is_brief=True)),
                   'menus and lists to be closed')

    def quit(self):
        """Ends the program as a person does; its exit status."""
        self.close_popups()
        keyboard.press_key('ctrl+q')
        return self.wait_for_end()

    def close(self):
        """Ends the program: as a person does where it has its window, else as a session does."""
        if not self.is_running:
            return
        try:
            if self.screen_windows():
                assert self.quit() == 0, self.messages
            else:
                self.process.terminate()
                self.wait_for_end()
        finally:
            if self.is_running:
                self.process.kill()
                self.process.wait()
