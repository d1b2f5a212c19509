"""A person's hands: real keys and a real pointer, through the window system."""

import subprocess


def _xdotool(*arguments):
    return subprocess.run(['xdotool', *map(str, arguments)], check=True, capture_output=True, text=True).stdout


def press_key(*keys):
    """Presses keys one after the other, such as "Tab" or "ctrl+shift+c"."""
    _xdotool('key', '--clearmodifiers', '--delay', '4', *keys)


def type_text(text):
    """Types into whatever has the focus."""
    _xdotool('type', '--clearmodifiers', '--delay', '3', text)


def click(node):
    """Clicks on the middle of something."""
    left, top, width, height = node.box
    _xdotool('mousemove', left + width // 2, top + height // 2, 'click', 1)


def park_pointer():
    """Puts the pointer where it hovers over nothing."""
    _xdotool('mousemove', 1279, 959)


def fill(field, text):
    """Gives a field the focus and replaces what it holds."""
    field.act('SetFocus')
    press_key('ctrl+a')
    type_text(text)


def windows_of(process_id, title):
    """The identifiers of the process's windows of that title on the screen."""
    found = subprocess.run(['xdotool', 'search', '--onlyvisible', '--all', '--pid', str(process_id), '--name',
                            f'^{title}$'], capture_output=True, text=True, check=False)
    return found.stdout.split()


def active_window():
    """The window that has the keyboard, or None."""
    found = subprocess.run(['xdotool', 'getactivewindow'], capture_output=True, text=True, check=False)
    return found.stdout.strip() or None


def activate(window):
    """Brings a window to the front, as a panel does."""
    _xdotool('windowactivate', '--sync', window)


def place(window):
    """Left, top, width and height of a window without its frame."""
    values = dict(line.split('=') for line in _xdotool('getwindowgeometry', '--shell', window).split() if '=' in line)
    return tuple(int(values[key]) for key in ('X', 'Y', 'WIDTH', 'HEIGHT'))


def put(window, left, top, width, height):
    """Moves and sizes a window, as a person does by its frame."""
    _xdotool('windowsize', '--sync', window, width, height)
    _xdotool('windowmove', '--sync', window, left, top)


def ask_for_size(window, width, height):
    """The same for the size alone, which the window may refuse."""
    _xdotool('windowsize', window, width, height)
