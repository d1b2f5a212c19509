"""The icon in the desktop's tray, and what the desktop is told of it."""

import shutil
from pathlib import Path

from harness.portal import APPEARANCE, DARK, LIGHT, Portal
from harness.waiting import wait_until

INSTALLED_NAME = 'example.tarnwik.client-symbolic'
DRAWING = Path(__file__).parents[3] / f'packaging/icons/{INSTALLED_NAME}.svg'
# The sizes that trays ask for, at one and two dots a point.
SIZES = {16, 17, 22, 24, 32, 34, 44, 48, 64}


def colours(item):
    """The colours of all that is drawn in the pictures, as red, green and blue."""
    found = set()
    for width, height, dots in item.properties()['IconPixmap']:
        assert len(dots) == 4 * width * height
        # Opacity comes first. Of what hardly covers anything the colour is rounded away.
        found |= {tuple(dots[place + 1:place + 4]) for place in range(0, len(dots), 4) if dots[place] > 250}
    return found


def opacity(picture):
    """How much of a picture is covered, from 0 to 1: in all, and of its corner."""
    width, height, dots = picture
    return sum(dots[::4]) / (255 * width * height), dots[0] / 255


def test_the_icon_is_called_after_the_program(tray, start):
    start('--demo')
    assert tray.item().properties()['Title'] == 'Tarnwik'


def test_the_tool_tip_says_which_program_it_is(tray, start):
    start('--demo')
    # Its own icon, title and text.
    assert tray.item().properties()['ToolTip'] == ('', [], 'Tarnwik', '')


def test_the_installed_icon_goes_by_its_name(tray, start, home):
    """So that the desktop takes it from its own theme, and tints it."""
    folder = home.folder / 'data/icons/hicolor/symbolic/apps'
    folder.mkdir(parents=True)
    shutil.copy(DRAWING, folder)
    start('--demo')
    assert tray.item().properties()['IconName'] == INSTALLED_NAME


def test_an_icon_that_is_not_installed_is_drawn_for_light_and_dark(tray, start):
    portal = Portal({APPEARANCE: {'color-scheme': LIGHT}})
    try:
        start('--demo')
        item = tray.item()
        properties = item.properties()
        assert properties['IconName'] == ''
        assert {(width, height) for width, height, _ in properties['IconPixmap']} == {(size, size) for size in SIZES}
        for picture in properties['IconPixmap']:
            covered, corner = opacity(picture)
            assert 0.3 < covered < 0.8 and corner == 0
        assert colours(item) == {(0, 0, 0)}
        portal.change(APPEARANCE, 'color-scheme', DARK)
        wait_until(lambda: colours(item) == {(255, 255, 255)}, 'an icon for a dark desktop')
    finally:
        portal.close()
