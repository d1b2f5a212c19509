"""The main job: choosing an exit node, connecting, watching the usage, disconnecting."""

import json
import re

import pytest

from conftest import sign_in
from harness import keyboard
from harness.accessible import NamesTold
from harness.service import Service, seed_file
from harness.waiting import stays_true, wait_until


STATUSES = {'Not configured', 'Disconnected', 'Connecting', 'Connected', 'Disconnecting', 'Unknown'}


def status_in(screen):
    """The large line at the top of the Connect screen."""
    return next((seen.name for seen in screen if seen.role == 'heading' and seen.name in STATUSES), None)


def status(application):
    return status_in(application.window().seen(is_brief=True))


def usage(application):
    """The usage in megabytes, from the line below the meter."""
    found = [re.fullmatch(r'([\d.]+) MB used of \d+ GB', text) for text in application.window().texts()]
    return next((float(match[1]) for match in found if match), None)


def connect(application):
    application.find('push button', 'Connect').press()
    wait_until(lambda: status(application) == 'Connected', 'the tunnel to be up')


def choose_node(application, caption):
    application.find('combo box', 'Exit node').press()
    application.find('list item', caption).press()


def test_the_tunnel_goes_through_every_status(signed_in):
    assert status(signed_in) == 'Not configured'
    with NamesTold() as names:
        signed_in.find('push button', 'Connect').press()
        button = signed_in.find('push button', 'Disconnect')
        wait_until(lambda: button.is_enabled, 'Disconnect to be enabled')
        button.press()
        button = signed_in.find('push button', 'Connect')
        wait_until(lambda: button.is_enabled, 'Connect to be enabled again')
        told = ['Connecting', 'Connected', 'Disconnecting', 'Disconnected']
        wait_until(lambda: names.among(STATUSES) == told, 'all that a screen reader is to be told')


def test_what_is_told_and_offered_while_connecting(signed_in):
    signed_in.find('push button', 'Connect').press()
    screen = []

    def is_connecting():
        screen[:] = signed_in.window().seen(is_brief=True)
        return status_in(screen) == 'Connecting'

    wait_until(is_connecting, 'the tunnel to go up')
    # Beside the status itself: the action control, which is no button now.
    assert [seen.role for seen in screen if seen.name == 'Connecting'] == ['heading', 'label']
    assert [seen.name for seen in screen if seen.role == 'push button'] == ['Refresh']
    assert [seen.is_enabled for seen in screen if seen.role == 'combo box'] == [True]
    wait_until(lambda: status(signed_in) == 'Connected', 'the tunnel to be up')


def test_usage_moves_while_connected_and_rests_while_not(signed_in):
    connect(signed_in)
    first = wait_until(lambda: usage(signed_in), 'the usage')
    refresh = signed_in.find('push button', 'Refresh')

    def has_grown():
        if refresh.is_enabled:
            refresh.press()
        return usage(signed_in) > first

    wait_until(has_grown, 'the usage to grow', step=0.3)
    signed_in.find('push button', 'Disconnect').press()
    wait_until(lambda: status(signed_in) == 'Disconnected', 'the tunnel to be down')
    wait_until(lambda: refresh.is_enabled, 'the refresh to be over')
    refresh.press()
    wait_until(lambda: refresh.is_enabled, 'the refresh to be over')
    at_rest = usage(signed_in)
    refresh.press()
    stays_true(lambda: usage(signed_in) == at_rest, 'usage at rest', 0.8)


@pytest.mark.takes(seconds=20)
def test_usage_moves_by_itself(signed_in):
    connect(signed_in)
    before = wait_until(lambda: usage(signed_in), 'the usage')
    wait_until(lambda: usage(signed_in) > before, 'the usage to be fetched', seconds=25, step=0.5)


def test_an_exit_node_is_chosen_with_the_picker(signed_in):
    picker = signed_in.find('combo box', 'Exit node')
    assert picker.description == 'Finland · Helsinki 1'
    picker.press()
    wait_until(lambda: signed_in.has('list item', 'Japan · Osaka 1'), 'the picker’s list')
    captions = [seen.name for seen in signed_in.window().seen(is_brief=True)
                if seen.role == 'list item' and '·' in seen.name]
    assert captions == ['Finland · Helsinki 1', 'Netherlands · Rotterdam 1', 'Switzerland · Zurich 1',
                        'Canada · Montreal 1', 'Japan · Osaka 1']
    assert signed_in.find('list item', 'Finland · Helsinki 1').is_selected
    signed_in.find('list item', 'Netherlands · Rotterdam 1').press()
    wait_until(lambda: picker.description == 'Netherlands · Rotterdam 1', 'the choice to be shown')
    signed_in.find(name='Rotterdam 1 · container')
    wait_until(lambda: not signed_in.has('list item', 'Japan · Osaka 1'), 'the list to be closed')


def test_the_chosen_node_is_the_one_that_is_connected(signed_in, home):
    choose_node(signed_in, 'Switzerland · Zurich 1')
    signed_in.find(name='Zurich 1 · virtual-machine')
    connect(signed_in)
    assert 'Zurich 1' in home.control('--demo', 'status')


def test_the_first_connect_makes_a_device(signed_in):
    signed_in.find(name='A local device profile will be created on first connect.')
    connect(signed_in)
    wait_until(lambda: signed_in.has(matches=lambda node: re.search(r' · 1 profile\b', node.description + node.name)),
               'the device')
    assert not signed_in.has(name='A local device profile will be created on first connect.')


def test_a_tunnel_that_another_program_starts_is_shown(signed_in, home):
    home.control('--demo', 'connect')
    wait_until(lambda: status(signed_in) == 'Connected', 'the tunnel that somebody else started')
    home.control('--demo', 'disconnect')
    wait_until(lambda: status(signed_in) == 'Disconnected', 'the tunnel to be down')


def test_the_tunnel_outlives_the_program(signed_in, start):
    connect(signed_in)
    assert signed_in.quit() == 0
    again = start('--demo')
    wait_until(lambda: status(again) == 'Connected', 'the tunnel that runs')
    again.find('push button', 'Disconnect').press()
    wait_until(lambda: status(again) == 'Disconnected', 'the tunnel to be down')


def test_an_account_without_nodes_is_told_so(start, tmp_path):
    service = Service('--seed', seed_file(tmp_path / 'seed.json', nodes=[]))
    try:
        application = start()
        sign_in(application, 'demo@tarnwik.example', 'demo', service.url)
        application.find(name='No nodes')
        application.find(name='No Tarnwik exit nodes are available for this account.')
        application.find(name='No node selected')
        assert not application.has('combo box')
        assert not application.find('push button', 'Connect').is_enabled
    finally:
        service.close()


def test_hostile_names_are_shown_as_they_are(start, proxy):
    names = ['<b>Bold</b> & <img src="file:///etc/passwd">', 'N' * 10000, '\u202eright to left', 'line\nbreak\x07',
             '&Amp']
    nodes = [{'id': number, 'name': name, 'provider': 'P' * 3000, 'region': 'nowhere', 'status': 'online',
              'runtime': 'container', 'endpoint': '192.0.2.1', 'awg_enabled': False, 'has_ipv6': False}
             for number, name in enumerate(names, 1)]
    proxy.answers['/api/customer/v1/nodes'] = json.dumps({'nodes': nodes}).encode()
    application = start()
    sign_in(application, 'demo@tarnwik.example', 'demo', proxy.url)
    for name in names[:3]:
        application.find('list item', name)
    left, _, width, _ = application.window().box
    for seen in application.window().seen():
        assert seen.box[0] + seen.box[2] <= left + width, f'{seen.name[:40]} is wider than the window'
    picker = application.find('combo box', 'Exit node')
    picker.press()
    application.find('list item', f'Nowhere · {names[1]}').press()
    wait_until(lambda: picker.description == f'Nowhere · {names[1]}', 'the choice')
    wait_until(lambda: application.find('push button', 'Connect').is_enabled, 'Connect to be enabled')


def test_the_sections_are_chosen_with_the_sidebar(signed_in):
    for title in ('Account', 'Settings', 'Connect'):
        row = signed_in.find('list item', title)
        row.press()
        wait_until(lambda row=row: row.is_selected, f'{title} to be chosen')
        signed_in.find('heading', title)
    keyboard.click(signed_in.find('list item', 'Account'))
    signed_in.find(name='demo@tarnwik.example')
