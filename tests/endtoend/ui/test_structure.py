"""Each screen has the texts, and these have the places, that were once looked at and found good.

What is compared are the words and boxes of the accessibility tree, not pixels: `structure/` keeps them, one file a
screen and size. To keep what the program shows now instead, run the tests with TARNWIK_KEEP_STRUCTURE=1, look at the
program, and look at the changes before you commit them.
"""

import json
import os
import re
from pathlib import Path

import pytest

from harness import keyboard
from screens import SCREENS, bring_up

FOLDER = Path(__file__).parent / 'structure'
KEEPS = os.environ.get('TARNWIK_KEEP_STRUCTURE') == '1'
SIZES = {'wide': (960, 680), 'narrow': (420, 540)}
# Points. Fonts are rounded differently from one version of their renderer to the next.
TOLERANCE = 3

# What differs from run to run: how much was used, and what the machine is called.
CHANGING = [(re.compile(r'[\d.]+ [KMG]?B used of'), '# used of'), (re.compile(r'^[\d.]+ [KMG]?B of'), '# of')]


def text_of(seen):
    text = seen.name
    for pattern, replacement in CHANGING:
        text = pattern.sub(replacement, text)
    return text


def structure_of(window):
    """All that the window shows, with places from its corner."""
    left, top, _, _ = window.box
    found = []
    for seen in window.seen():
        if seen.role == 'frame':
            continue
        box = [seen.box[0] - left, seen.box[1] - top, *seen.box[2:]]
        found.append({'role': seen.role, 'text': text_of(seen), 'box': box,
                      'states': sorted(seen.states & {'enabled', 'selected'})})
    return found


def differences(kept, shown):
    """Where two structures differ, in words."""
    if [(entry['role'], entry['text']) for entry in kept] != [(entry['role'], entry['text']) for entry in shown]:
        before, after = ([f'{entry["role"]} "{entry["text"]}"' for entry in side] for side in (kept, shown))
        return ([f'gone: {line}' for line in before if line not in after]
                + [f'new: {line}' for line in after if line not in before]) or ['the order differs']
    found = []
    for old, new in zip(kept, shown):
        if old['states'] != new['states']:
            found.append(f'{old["role"]} "{old["text"]}" was {old["states"]} and is {new["states"]}')
        if max(abs(a - b) for a, b in zip(old['box'], new['box'])) > TOLERANCE:
            found.append(f'{old["role"]} "{old["text"]}" was at {old["box"]} and is at {new["box"]}')
    return found


@pytest.mark.parametrize('screen', SCREENS, ids=lambda screen: screen.name)
def test_the_screen_looks_as_it_was_kept(screen, demo):
    window = bring_up(screen, demo)
    faults = []
    for name, size in SIZES.items():
        if screen.name == 'settings-window-signed-out' and name == 'narrow':
            continue
        shown = structure_at(demo, window, screen, size)
        faults += own_faults(shown)
        file = FOLDER / f'{screen.name}-{name}.json'
        if KEEPS:
            lines = ',\n'.join(json.dumps(entry, ensure_ascii=False) for entry in shown)
            file.write_text(f'[\n{lines}\n]\n', encoding='utf-8')
        else:
            faults += differences(json.loads(file.read_text(encoding='utf-8')), shown)
    assert faults == []


def structure_at(application, window, screen, size):
    """The structure once the window has that size and all in it has followed."""
    title = 'Settings' if screen.name.startswith('settings-window') else 'Tarnwik'
    if title == 'Tarnwik':
        keyboard.put(application.screen_window(), 100, 60, *size)
    last = None
    for _ in range(40):
        now = structure_of(window)
        if now == last:
            break
        last = now
    return last


def own_faults(shown):
    """What is wrong whatever was kept: labels that lie on each other."""
    labels = [entry for entry in shown if entry['role'] in ('label', 'heading', 'alert message') and entry['text']]
    found = []
    for index, one in enumerate(labels):
        for other in labels[index + 1:]:
            width = min(one['box'][0] + one['box'][2], other['box'][0] + other['box'][2]) - max(one['box'][0],
                                                                                              other['box'][0])
            height = min(one['box'][1] + one['box'][3], other['box'][1] + other['box'][3]) - max(one['box'][1],
                                                                                               other['box'][1])
            if width > 2 and height > 2:
                found.append(f'"{one["text"]}" lies on "{other["text"]}"')
    return found
