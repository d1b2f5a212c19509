#!/usr/bin/python3
"""Measures tarnwik from outside, on a virtual screen, beside nm-connection-editor and a bare Qt Quick window.

usage: window.py BUILD_FOLDER [starts|idle|nodes|scrolling]...    (inside with-desktop.sh; all of them by default)

In the environment: TARNWIK_BENCH_ROUNDS, how often each window is opened (9), and TARNWIK_BENCH_IDLE_SECONDS, how long
each is then watched doing nothing (60).
"""

import contextlib
import functools
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from Xlib import XK

from nodes import seed_with_nodes
from process import median, megabytes, processor_milliseconds, wake_ups
from screen import Screen

ROUNDS = int(os.environ.get('TARNWIK_BENCH_ROUNDS', 9))
SETTLE_SECONDS = 5
IDLE_SECONDS = int(os.environ.get('TARNWIK_BENCH_IDLE_SECONDS', 60))
FEW_NODES, MANY_NODES = 10, 10_000
WHEEL_STEPS, PAGES = 150, 60
FRAME_MILLISECONDS = 16
FIXTURE = Path(__file__).resolve().parent.parent / 'tests/support/networkmanager/run-beside-networkmanager.sh'
WAIT = re.compile(r'^(?P<begin>[\d.]+) p?poll\(\[\{fd=(?P<descriptor>\d+), .*?\], (?P<count>\d+), '
                  r'.*<(?P<length>[\d.]+)>$')


class Subject:
    """A program to be measured, and the home folder that it starts with."""

    def __init__(self, name, command, home=None, requests=None):
        self.name, self.command, self.home, self.requests = name, command, home, requests
        self.frames, self.shown, self.resident, self.proportional = [], [], [], []

    @contextlib.contextmanager
    def running(self, screen, before=(), **variables):
        """Starts the program in a copy of its home, and ends it. Gives the process and the moment of the start."""
        with tempfile.TemporaryDirectory() as folder:
            home = Path(folder, 'home')
            shutil.copytree(self.home, home) if self.home else home.mkdir()
            begin = time.monotonic()
            with subprocess.Popen([*before, *self.command], env=environment(home, **variables),
                                  stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL) as process:
                try:
                    yield process, begin
                finally:
                    process.terminate()
                    process.wait()
            screen.forget()

    def fetches(self):
        """How often the nodes were fetched, by what the service tells."""
        return self.requests.read_text(encoding='utf-8').count('/nodes 200') if self.requests else 0

    def measure_start(self, screen):
        fetches = self.fetches()
        with self.running(screen) as (process, begin):
            self.frames.append(screen.first_content(begin))
            changes = list(screen.events(begin + SETTLE_SECONDS - time.monotonic()))
            self.shown.append((changes[-1] - begin) * 1e3 if changes else self.frames[-1])
            resident, proportional = megabytes(process.pid)
            self.resident.append(resident)
            self.proportional.append(proportional)
        if self.requests and self.fetches() == fetches:
            raise RuntimeError('The nodes were not there in time.')

    def wake_ups(self, screen):
        with self.running(screen) as (process, begin):
            screen.first_content(begin)
            time.sleep(SETTLE_SECONDS)
            return wake_ups(process.pid, IDLE_SECONDS)

    def report(self):
        print(f'{self.name}: first frame {median(self.frames):.0f} ms ({min(self.frames):.0f} to '
              f'{max(self.frames):.0f}), last change {median(self.shown):.0f} ms, resident {median(self.resident):.1f} '
              f'MB, proportional {median(self.proportional):.1f} MB', flush=True)


def environment(home, **variables):
    kept = {name: os.environ[name] for name in ('PATH', 'DISPLAY', 'DBUS_SESSION_BUS_ADDRESS', 'XDG_RUNTIME_DIR')}
    # Without accessibility, which costs GTK a connection to a bus of its own and Qt nothing as long as nobody asks.
    return kept | {'DBUS_SYSTEM_BUS_ADDRESS': os.environ['NETWORKMANAGER_BUS'], 'HOME': str(home), 'LC_ALL': 'C.UTF-8',
                   'NO_AT_BRIDGE': '1'} | variables


@contextlib.contextmanager
def network_manager():
    """A real one in namespaces of its own. Only its bus is seen from here: the programs ask it, and change nothing."""
    command = [FIXTURE, 'sh', '-c', 'echo "$DBUS_SYSTEM_BUS_ADDRESS"; cat']
    with subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True) as fixture:
        os.environ['NETWORKMANAGER_BUS'] = fixture.stdout.readline().strip()
        try:
            yield
        finally:
            fixture.stdin.close()


def in_turn(screen, subjects):
    """The subjects take turns, so that what else happens on the machine falls upon all of them."""
    for turn in range(ROUNDS + 1):
        for subject in subjects:
            subject.measure_start(screen)
            if turn == 0:
                # That was to warm the caches.
                subject.frames, subject.shown, subject.resident, subject.proportional = [], [], [], []
    for subject in subjects:
        subject.report()


def sign_in(client, home, *arguments):
    home.mkdir()
    subprocess.run([client, *arguments], input='demo\n', env=environment(home), check=True, text=True,
                   stdout=subprocess.DEVNULL)
    return home


@contextlib.contextmanager
def with_nodes(build, folder, count):
    """tarnwik, signed in at a service of its own that has so many nodes."""
    seed = Path(folder, f'{count}.json')
    seed.write_text(seed_with_nodes(count), encoding='utf-8')
    requests = Path(folder, f'requests-{count}')
    command = [build / 'src/service/server/tarnwik-service', '--verbose', '--seed', seed]
    with open(requests, 'w', encoding='utf-8') as log, \
            subprocess.Popen(command, stdout=subprocess.PIPE, stderr=log, text=True) as service:
        try:
            url = service.stdout.readline().split()[-1]
            home = sign_in(build / 'src/cli/tarnwikctl', Path(folder, f'home-{count}'), 'sign-in', '--email',
                           'demo@tarnwik.example', '--server', url)
            yield Subject(f'tarnwik, {count} nodes', [build / 'src/ui/app/tarnwik'], home, requests)
        finally:
            service.terminate()


def ratio(name, ours, theirs):
    print(f'{name}: {median(ours) / median(theirs):.2f}')


def measure_starts(screen, signed_out, signed_in, peer, bare):
    in_turn(screen, [peer, bare, signed_out, signed_in])
    for ours in (signed_out, signed_in):
        ratio(f'first frame of {ours.name}, against {peer.name}', ours.frames, peer.frames)


def measure_idling(screen, *subjects):
    for subject in subjects:
        counts = subject.wake_ups(screen)
        seconds = ', '.join(f'{count} in second {second}' for second, count in enumerate(counts) if count)
        print(f'{subject.name}: {sum(counts)} wake-ups in {IDLE_SECONDS} s{": " if seconds else ""}{seconds}',
              flush=True)


def measure_nodes(screen, few, many):
    in_turn(screen, [few, many])
    ratio(f'first frame with {MANY_NODES} nodes, against {FEW_NODES}', many.frames, few.frames)
    ratio(f'last change with {MANY_NODES} nodes, against {FEW_NODES}', many.shown, few.shown)
    print(f'resident memory more: {median(many.resident) - median(few.resident):.1f} MB')


def work_between_waits(trace):
    """When the program's main loop began to do something, and for how many milliseconds until it waited again."""
    stretches, last_end, connection = [], None, None
    for line in trace.read_text(encoding='utf-8').splitlines():
        wait = WAIT.match(line)
        if not wait:
            continue
        # The first wait is for the screen's greeting. Later ones for the screen alone are a part of drawing.
        connection = connection or wait['descriptor']
        if wait['count'] == '1' and wait['descriptor'] == connection:
            continue
        begin = float(wait['begin'])
        if last_end is not None:
            stretches.append((last_end, (begin - last_end) * 1e3))
        last_end = begin + float(wait['length'])
    return stretches


def scroll(screen, step, count, seconds):
    """Scrolls, and returns the time at which it began and the number of pictures."""
    begin = time.time()
    pictures = 0
    for _ in range(count):
        step()
        pictures += len(list(screen.events(seconds)))
    return begin, pictures


def measure_scrolling(screen, subject):
    with tempfile.TemporaryDirectory() as folder:
        # One file for each thread, so that no line of one is broken by another.
        trace = Path(folder, 'trace')
        strace = ['strace', '-ff', '--seccomp-bpf', '-e', 'trace=poll,ppoll', '-ttt', '-T', '-o', trace]
        with subject.running(screen, before=strace) as (process, begin):
            screen.first_content(begin)
            list(screen.events(SETTLE_SECONDS))
            pid = int(Path(f'/proc/{process.pid}/task/{process.pid}/children').read_text(encoding='ascii').split()[0])
            screen.point_at_middle()
            list(screen.events(1))
            processor = processor_milliseconds(pid)
            began_wheel, wheel_pictures = scroll(screen, screen.turn_wheel, WHEEL_STEPS, 0.05)
            list(screen.events(1))
            wheel_processor = processor_milliseconds(pid) - processor
            page_down = functools.partial(screen.press_key, XK.string_to_keysym('Next'))
            began_pages, page_pictures = scroll(screen, page_down, PAGES, 0.1)
            ended = time.time()
            subprocess.run(['kill', str(pid)], check=True)
            process.wait()
        waits = work_between_waits(Path(folder, f'trace.{pid}'))
        for name, first, last, pictures in (('wheel', began_wheel, began_pages, wheel_pictures),
                                            ('pages', began_pages, ended, page_pictures)):
            work = sorted(length for moment, length in waits if first <= moment < last)
            too_long = sum(length > FRAME_MILLISECONDS for length in work)
            print(f'{subject.name}, scrolling by {name}: {pictures} pictures; work from a wait to the next: longest '
                  f'{work[-1]:.1f} ms, 99 % below {work[len(work) * 99 // 100]:.1f} ms; {too_long} above '
                  f'{FRAME_MILLISECONDS} ms')
        print(f'{subject.name}, processor time for a picture of the wheel: {wheel_processor / wheel_pictures:.1f} ms',
              flush=True)


def main(build, *chosen):
    build = Path(build).resolve()
    program, client = build / 'src/ui/app/tarnwik', build / 'src/cli/tarnwikctl'
    screen = Screen()
    with network_manager(), tempfile.TemporaryDirectory() as folder, contextlib.ExitStack() as stack:
        home = sign_in(client, Path(folder, 'demo'), '--demo', 'sign-in', '--email', 'demo@tarnwik.example')
        signed_out = Subject('tarnwik, sign-in screen', [program, '--demo'])
        signed_in = Subject('tarnwik, dashboard', [program, '--demo'], home)
        peer = Subject('nm-connection-editor', ['nm-connection-editor'])
        bare = Subject('bare Qt Quick window', [build / 'bench/tarnwik_bare_window'])
        few = stack.enter_context(with_nodes(build, folder, FEW_NODES))
        many = stack.enter_context(with_nodes(build, folder, MANY_NODES))
        if not chosen or 'starts' in chosen:
            measure_starts(screen, signed_out, signed_in, peer, bare)
        if not chosen or 'idle' in chosen:
            measure_idling(screen, signed_out, signed_in, few, peer, bare)
        if not chosen or 'nodes' in chosen:
            measure_nodes(screen, few, many)
        if not chosen or 'scrolling' in chosen:
            measure_scrolling(screen, many)


if __name__ == '__main__':
    main(*sys.argv[1:])
