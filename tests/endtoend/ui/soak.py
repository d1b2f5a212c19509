"""A person who does anything at any time, repeatable by a number."""

import random

from gi.repository import GLib

from harness import keyboard
from harness.waiting import wait_until

EMAIL = 'demo@tarnwik.example'
# From here a person goes on, whatever else the screen shows.
SIGN_IN_FIELDS = {('text', 'Email'), ('text', 'Password')}
SIDEBAR_ROWS = {('list item', 'Connect'), ('list item', 'Account'), ('list item', 'Settings')}


class RandomUser:
    """Does one thing after the other, none of which is told beforehand but by the seed."""

    def __init__(self, application, item, url, seed):
        self.application, self.item, self.url = application, item, url
        self.chance = random.Random(seed)
        self.done = []

    def act(self):
        """Does one thing. What is no longer there when it is to be pressed is left alone, as a person does."""
        action = self.chance.choice(self._signed_in_actions() if self._is_signed_in() else self._signed_out_actions())
        self.done.append(action.__name__.strip('_'))
        try:
            action()
        except GLib.Error:
            pass

    def check(self):
        """The program runs, and there is an enabled way on, at the latest when the server's last answer has come."""
        assert self.application.is_running, f'ended after {self.done[-10:]}: {self.application.messages}'
        wait_until(self._has_way_out, f'a way out after {self.done[-10:]}', 15)

    def gets_to_connect(self):
        """Takes the next step to a Connect that can be pressed; whether it is reached."""
        if not self._is_signed_in():
            self._sign_in()
            return False
        # A screen that is left comes back unscrolled.
        for title in ('Account', 'Connect'):
            for row in self.application.window().all('list item', title):
                row.press()
        screen = self.application.window().seen(is_brief=True)
        enabled = {(seen.role, seen.name) for seen in screen if seen.is_enabled}
        if {('combo box', 'Exit node'), ('push button', 'Connect')} <= enabled:
            return True
        for refresh in self.application.window().all('push button', 'Refresh', lambda node: node.is_enabled):
            refresh.press()
        return False

    def _is_signed_in(self):
        return self.application.has('list item', 'Account')

    def _has_way_out(self):
        window = self.application.window_or_none()
        if window is None:
            self._open_from_tray()
            return False
        enabled = {(seen.role, seen.name) for seen in window.seen(is_brief=True) if seen.is_enabled}
        return SIGN_IN_FIELDS <= enabled or SIDEBAR_ROWS <= enabled

    def _signed_out_actions(self):
        return [self._sign_in] * 4 + [self._sign_in_wrongly, self._settings_window, self._menu, self._keys,
                                      self._tray_entry, self._close_and_open]

    def _signed_in_actions(self):
        return [self._section] * 3 + [self._any_button] * 5 + [self._choose_node, self._settings_window, self._menu,
                                                               self._keys, self._tray_entry, self._close_and_open,
                                                               self._size, self._sign_out]

    def _sign_in(self):
        self._try_to_sign_in('demo')

    def _sign_in_wrongly(self):
        self._try_to_sign_in(self.chance.choice(['wrong', ' ', 'd']))

    def _try_to_sign_in(self, password):
        self.application.activate()
        for name, text in (('Server URL', self.url), ('Email', EMAIL), ('Password', password)):
            fields = self.application.window().all(name=name)
            if fields:
                keyboard.fill(fields[0], text)
        keyboard.press_key('Return')

    def _section(self):
        # A sign-out that is under way may have taken the sidebar.
        for row in self.application.window().all('list item', self.chance.choice(['Connect', 'Account', 'Settings'])):
            row.press()

    def _any_button(self):
        buttons = self.application.window().all('push button', matches=lambda node: node.name != 'Manage billing')
        if buttons:
            self.chance.choice(buttons).press()

    def _choose_node(self):
        pickers = self.application.window().all('combo box')
        if not pickers:
            return
        pickers[0].press()
        rows = self.application.window().all('list item', matches=lambda node: ' · ' in node.name)
        if rows and self.chance.random() < 0.8:
            self.chance.choice(rows).press()
        else:
            keyboard.press_key('Escape')

    def _settings_window(self):
        self.application.close_popups()
        keyboard.press_key('ctrl+comma')
        window = wait_until(lambda: self.application.window_or_none('Settings'), 'the Settings window')
        if self.chance.random() < 0.5:
            self.chance.choice(window.all('push button') or [window.find('push button')]).press()
        self.application.activate('Settings')
        keyboard.press_key('ctrl+w')
        wait_until(lambda: not self.application.screen_windows('Settings'), 'the Settings window to be gone')

    def _menu(self):
        self.application.activate()
        buttons = self.application.window().all(name='Menu')
        if buttons:
            buttons[0].press()
            keyboard.press_key(*['Down'] * self.chance.randrange(3), 'Escape')

    def _keys(self):
        self.application.activate()
        keyboard.press_key(*self.chance.choices(
            ['Tab', 'shift+Tab', 'space', 'Return', 'Escape', 'Down', 'Up', 'Page_Down', 'Home', 'ctrl+r', 'ctrl+1',
             'ctrl+2', 'ctrl+3', 'ctrl+0', 'ctrl+shift+c', 'ctrl+shift+d', 'a'], k=4))

    def _tray_entry(self):
        self.item.open()
        label = self.chance.choice(['Connect', 'Disconnect', 'Refresh', 'Open Tarnwik', 'Sign Out'])
        if self.item.entry_or_none(label):
            self.item.press(label)

    def _close_and_open(self):
        self.application.close_popups()
        keyboard.press_key('ctrl+w')
        wait_until(lambda: not self.application.screen_windows(), 'the window to be gone')
        self._open_from_tray()

    def _open_from_tray(self):
        self.item.press('Open Tarnwik')
        self.application.screen_window()

    def _size(self):
        window = self.application.screen_window()
        keyboard.ask_for_size(window, self.chance.randrange(420, 1100), self.chance.randrange(540, 900))

    def _sign_out(self):
        keyboard.press_key('ctrl+3')
        buttons = self.application.window().all('push button', 'Sign Out')
        if buttons:
            buttons[0].press()
