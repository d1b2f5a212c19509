"""What is on the screen, as a person sees it."""

import subprocess


def _measure(window, *options):
    answer = subprocess.run(['import', '-silent', '-window', str(window), *options, 'info:'], check=True,
                            capture_output=True, text=True).stdout
    return [float(value) for value in answer.split()]


def brightness(window):
    """How bright a window is along its left edge, which no smaller window in its middle covers: from 0 to 1."""
    return _measure(window, '-crop', '40x0+0+0', '+repage', '-format', '%[fx:mean]')[0]


def colour_at(left, top):
    """Red, green and blue of one point of the screen, each from 0 to 1."""
    return _measure('root', '-crop', f'1x1+{left}+{top}', '+repage', '-format', '%[fx:u.r] %[fx:u.g] %[fx:u.b]')
