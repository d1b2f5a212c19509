"""Watches one program's window from outside, as the X server sees it."""

import select
import time

import Xlib.display
from Xlib import X, Xatom
from Xlib.error import XError
from Xlib.ext import damage, xtest

# A window that is only cleared, or shows nothing but surfaces, has fewer colours. The smooth edge of a letter has more.
CONTENT_COLORS = 8
STRIP_DISTANCE = 12


class Screen:
    """The screen that DISPLAY names. No other program may show windows on it."""

    def __init__(self):
        self._display = Xlib.display.Display()
        self._display.set_error_handler(lambda *_: None)
        self._display.damage_query_version()
        self._root = self._display.screen().root
        self._root.change_attributes(event_mask=X.PropertyChangeMask)
        self._clients = self._display.intern_atom('_NET_CLIENT_LIST')
        self.window = None

    def windows(self):
        """What the window manager manages."""
        found = self._root.get_full_property(self._clients, Xatom.WINDOW)
        return list(found.value) if found else []

    def events(self, seconds):
        """Yields the times at which something was drawn into the window, until so many seconds have gone by."""
        end = time.monotonic() + seconds
        while (left := end - time.monotonic()) > 0:
            if not self._display.pending_events():
                select.select([self._display.fileno()], [], [], left)
            now = time.monotonic()
            was_drawn = False
            while self._display.pending_events():
                event = self._display.next_event()
                if event.type == X.PropertyNotify and event.atom == self._clients:
                    was_drawn |= self._take_window()
                elif event.type == self._display.extension_event.DamageNotify:
                    # The event counts from here on anew.
                    self._display.damage_subtract(event.damage)
                    was_drawn = True
            if was_drawn:
                yield now

    def has_content(self):
        """Whether the window shows more than its background."""
        try:
            size = self.window.get_geometry()
            colors = set()
            # Thin strips: a whole picture would take longer to fetch than to draw.
            for y in range(STRIP_DISTANCE, size.height, STRIP_DISTANCE):
                strip = self.window.get_image(0, y, size.width, 1, X.ZPixmap, 0xffffffff).data
                colors.update(memoryview(strip).cast('I'))
                if len(colors) >= CONTENT_COLORS:
                    return True
        except XError:
            # It is not shown yet.
            pass
        return False

    def first_content(self, begin, seconds=15):
        """Milliseconds from begin until the first content was drawn."""
        for moment in self.events(seconds):
            if self.window and self.has_content():
                return (moment - begin) * 1e3
        raise TimeoutError('No window with content came.')

    def point_at_middle(self):
        place = self._root.translate_coords(self.window, 0, 0)
        size = self.window.get_geometry()
        self._input(X.MotionNotify, x=-place.x + size.width * 2 // 3, y=-place.y + size.height * 2 // 3)

    def turn_wheel(self):
        button = 5
        self._input(X.ButtonPress, button)
        self._input(X.ButtonRelease, button)

    def press_key(self, symbol):
        code = self._display.keysym_to_keycode(symbol)
        self._input(X.KeyPress, code)
        self._input(X.KeyRelease, code)

    def forget(self):
        """After the program's end, before the next one's start."""
        self.window = None
        while self.windows():
            time.sleep(0.02)
        list(self.events(0.2))

    def _take_window(self):
        if self.window or not self.windows():
            return False
        self.window = self._display.create_resource_object('window', self.windows()[0])
        self.window.damage_create(damage.DamageReportNonEmpty)
        return True

    def _input(self, kind, *detail, **place):
        xtest.fake_input(self._display, kind, *detail, **place)
        self._display.flush()
