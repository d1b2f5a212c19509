"""A person who does anything at any time, over a server that fails at any time.

TARNWIK_SOAK_ACTIONS says how many things that person does, and TARNWIK_SOAK_SEED which.
"""

import os

import pytest

from harness.service import failing_at_random
from harness.waiting import wait_until
from soak import RandomUser

ACTIONS = int(os.environ.get('TARNWIK_SOAK_ACTIONS', '200'))
SEED = int(os.environ.get('TARNWIK_SOAK_SEED', '1'))
# The sanitizers keep what was freed for a while.
MEASURES_MEMORY = os.environ.get('TARNWIK_TEST_SANITIZED') != '1'
# Kilobytes. Caches fill during the first actions; from then on there is no reason to grow.
GROWTH_ALLOWED = 6 * 1024


@pytest.mark.takes(seconds=ACTIONS / 4)
def test_no_crash_no_dead_end_and_no_growth(start, proxy, tray, keyring, capsys):
    application = start()
    item = tray.item()
    proxy.behaviour = failing_at_random(SEED)
    user = RandomUser(application, item, proxy.url, SEED)
    sizes = []
    for number in range(ACTIONS):
        user.act()
        user.check()
        if number % max(1, ACTIONS // 20) == 0:
            sizes.append(application.resident_kilobytes())
    sizes.append(application.resident_kilobytes())

    with capsys.disabled():
        print(f'\n{ACTIONS} actions, {len(proxy.requests)} requests; resident memory in kB: {sizes}')

    # Once the server is well again, so is the program.
    proxy.release()
    wait_until(user.gets_to_connect, 'a Connect that can be pressed', 30, step=0.5)

    settled = sizes[len(sizes) // 2]
    if MEASURES_MEMORY:
        assert sizes[-1] - settled <= GROWTH_ALLOWED, sizes
