"""Every control of every screen can be found, told and reached by those who do not see it or have no pointer."""

import pytest

from harness import keyboard
from harness.accessible import CONTROL_ROLES
from harness.waiting import wait_until
from screens import SCREENS, bring_up

# Roles that tell nobody anything.
EMPTY_ROLES = {'', 'unknown', 'invalid', 'filler', 'panel', 'layered pane', 'redundant object'}
# Of these the focus moves among the entries with the arrow keys.
POPUPS = {'connect-picker': 'list item', 'sign-in-menu': 'menu item', 'dashboard-menu': 'menu item'}


def faults_of(node):
    """What is wrong with one object as it was seen, in words."""
    states = node.states
    what = f'{node.role} "{node.name}"'
    is_control = node.role in CONTROL_ROLES
    if not is_control and 'focusable' not in states:
        if node.role in ('label', 'heading', 'list item', 'alert message') and not node.name:
            yield f'{what} says nothing'
        return
    if not node.name.strip():
        yield f'{what} has no name'
    if node.role in EMPTY_ROLES:
        yield f'{what} has no role'
    if is_control and node.is_enabled and 'focusable' not in states:
        yield f'{what} is enabled and takes no focus'
    if not node.is_enabled and 'focusable' in states:
        yield f'{what} is disabled and takes the focus'
    if node.role in ('push button', 'link', 'combo box', 'menu item', 'button menu') and 'Press' not in node.actions:
        yield f'{what} cannot be pressed'
    if min(node.box[2:]) <= 0:
        yield f'{what} has no size'


def focusable(window):
    return {seen.node for seen in window.seen(is_brief=True) if 'focusable' in seen.states and seen.role != 'frame'}


@pytest.mark.parametrize('screen', SCREENS, ids=lambda screen: screen.name)
def test_every_control_has_a_name_a_role_and_keys_that_lead_to_it(screen, demo):
    window = bring_up(screen, demo)
    faults = [fault for node in window.seen() if node.role != 'frame' for fault in faults_of(node)]
    assert faults == []
    if screen.name in POPUPS:
        assert_arrows_reach(demo, window, POPUPS[screen.name])
    else:
        assert_tab_reaches(demo, window)


def assert_tab_reaches(application, window):
    expected = focusable(window)
    reached = set()
    for _ in range(2 * len(expected) + 4):
        application.press_tab(in_window=window)
        reached |= {seen.node for seen in window.seen(is_brief=True) if seen.is_focused}
        if expected <= reached:
            break
    assert expected - reached == set(), 'Tab does not lead there'


def assert_arrows_reach(application, window, role):
    """In a popup, which keeps the focus to itself, the arrow keys go from entry to entry, and Return chooses one."""
    entries = [seen for seen in window.seen() if seen.role == role and (role == 'menu item' or '·' in seen.name)]
    assert len(entries) >= 5
    keyboard.press_key(*['Down'] * len(entries), 'Return')
    if role == 'menu item':
        assert application.wait_for_end() == 0, 'the last entry is Quit'
    else:
        wait_until(lambda: application.find('combo box').description == entries[-1].name, 'the last entry to be chosen')
