"""Waiting for what a person would wait for."""

import os
import time

from gi.repository import GLib

# Everything takes longer under the sanitizers.
SLOWNESS = float(os.environ.get('TARNWIK_TEST_SLOWNESS', '1'))


def wait_until(condition, what, seconds=8.0, step=0.02):
    """Waits until the condition gives something true, which is returned; fails with the words when it does not.

    What lies behind an accessible object may go at any moment: such an error means "not yet". A condition that takes
    its time is asked less often, so that the program gets to do what is waited for.
    """
    end = time.monotonic() + seconds * SLOWNESS
    while True:
        begin = time.monotonic()
        try:
            value = condition()
            last = repr(value)
        except GLib.Error as error:
            value, last = None, error.message
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError(f'waited in vain: {what} (last: {last})')
        time.sleep(max(step, min(time.monotonic() - begin, 0.1)))


def stays_true(condition, what, seconds=0.5):
    """Fails as soon as the condition does not hold, within a while."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        assert condition(), f'did not last: {what}'
        time.sleep(0.03)
