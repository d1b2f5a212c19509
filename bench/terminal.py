#!/usr/bin/python3
"""Measures tarnwikctl from outside, against a service process on loopback and a real NetworkManager.

usage: terminal.py TARNWIKCTL TARNWIK_SERVICE    (inside run-beside-networkmanager.sh)
"""

import json
import os
import statistics
import subprocess
import sys
import tempfile
import time

from process import megabytes, wake_ups

ROUNDS = 21
SETTLE_SECONDS = 3
IDLE_SECONDS = 15


def milliseconds(commands, environment):
    start = time.perf_counter()
    for command in commands:
        subprocess.run(command, env=environment, check=True, stdout=subprocess.DEVNULL)
    return (time.perf_counter() - start) * 1e3


def measure_status(client, url, token, environment):
    ours, theirs = [], []
    header = f'Authorization: Bearer {token}'
    peers = [['curl', '-sS', '-H', header, f'{url}/api/customer/v1/{path}'] for path in ('session', 'nodes', 'devices')]
    peers.append(['nmcli', 'general', 'status'])
    for _ in range(ROUNDS):
        ours.append(milliseconds([[client, 'status']], environment))
        theirs.append(milliseconds(peers, environment))
    ours, theirs = statistics.median(ours), statistics.median(theirs)
    print(f'tarnwikctl status: {ours:.1f} ms; 3 x curl + nmcli general status: {theirs:.1f} ms; '
          f'ratio {ours / theirs:.2f} (medians of {ROUNDS})')


def measure_watch(client, environment):
    with subprocess.Popen([client, 'watch'], env=environment, stdout=subprocess.DEVNULL) as watch:
        time.sleep(SETTLE_SECONDS)
        woken = sum(wake_ups(watch.pid, IDLE_SECONDS))
        # The fetch comes 20 s after the start.
        time.sleep(20 - SETTLE_SECONDS - IDLE_SECONDS + 2)
        print(f'tarnwikctl watch: {megabytes(watch.pid)[0]:.1f} MB resident after a usage fetch; '
              f'{woken} wake-ups in {IDLE_SECONDS} s between fetches')
        watch.terminate()


def main(client, service_program):
    client, service_program = os.path.abspath(client), os.path.abspath(service_program)
    with tempfile.TemporaryDirectory() as home:
        environment = {'PATH': os.environ['PATH'], 'HOME': home,
                       'DBUS_SYSTEM_BUS_ADDRESS': os.environ['DBUS_SYSTEM_BUS_ADDRESS']}
        with subprocess.Popen([service_program, '--port', '0'], stdout=subprocess.PIPE, text=True) as service:
            url = service.stdout.readline().split()[-1]
            subprocess.run([client, 'sign-in', '--email', 'demo@tarnwik.example', '--server', url], input='demo\n',
                           env=environment, check=True, text=True, stdout=subprocess.DEVNULL)
            with open(f'{home}/.config/tarnwik/defaults.json', encoding='utf-8') as file:
                token = json.load(file)['TarnwikAuthToken']
            measure_status(client, url, token, environment)
            measure_watch(client, environment)
            service.terminate()


if __name__ == '__main__':
    main(*sys.argv[1:])
