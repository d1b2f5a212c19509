"""What the tray's menu does not offer, and a panel presses nevertheless: it showed the menu before that changed, or
does not care."""

import json

import pytest

from conftest import sign_in
from harness.waiting import stays_true, wait_until

COMMANDS = ('Connect', 'Refresh', 'Sign Out')


@pytest.mark.parametrize('label', COMMANDS)
def test_signed_out_nothing_is_sent_and_nothing_changes(tray, start, proxy, home, label):
    defaults = home.folder / 'config/tarnwik/defaults.json'
    defaults.parent.mkdir(parents=True)
    defaults.write_text(json.dumps({'TarnwikServerURL': proxy.url}), encoding='utf-8')
    application = start()
    item = tray.item()
    assert application.find(name='Server URL').text == proxy.url
    entries, screen = item.entries(), application.window().texts()
    assert not item.is_enabled(label)
    for _ in range(3):
        item.press(label)
    stays_true(lambda: not proxy.requests and item.entries() == entries and application.window().texts() == screen,
               f'nothing to come of {label}')
    assert json.loads(defaults.read_text(encoding='utf-8')) == {'TarnwikServerURL': proxy.url}


@pytest.mark.parametrize('label', COMMANDS)
def test_while_the_program_is_busy_nothing_more_is_sent_and_nothing_follows(tray, start, proxy, label):
    application = start()
    item = tray.item()
    sign_in(application, 'demo@tarnwik.example', 'demo', proxy.url)
    wait_until(lambda: item.is_enabled('Connect'), 'Connect in the tray')
    come_to_rest(proxy)
    before = item.entries()
    proxy.hold('/nodes')
    seen = proxy.count('/nodes')
    item.press('Refresh')
    wait_until(lambda: proxy.count('/nodes') > seen and not item.is_enabled(label), 'the program to be busy')
    come_to_rest(proxy)
    sent, entries = asked_for(proxy), item.entries()
    for _ in range(3):
        item.press(label)
    stays_true(lambda: asked_for(proxy) == sent and item.entries() == entries, f'nothing to come of {label}')
    proxy.release()
    wait_until(lambda: item.is_enabled('Refresh'), 'the refresh to be over')
    stays_true(lambda: asked_for(proxy) == sent and item.entries() == before, 'the menu as it was')


def asked_for(proxy):
    """All that the program has sent, but for what it asks every now and then by itself: how the account is."""
    return [request for request in proxy.requests if request != ('GET', '/api/customer/v1/session')]


def come_to_rest(proxy):
    """Waits until no more is sent."""
    seen = None

    def is_at_rest():
        nonlocal seen
        former, seen = seen, asked_for(proxy)
        return seen == former

    wait_until(is_at_rest, 'the requests to come to rest', step=0.3)


def test_an_exit_node_is_not_changed_while_the_tunnel_is_up(tray, start):
    application = start('--demo')
    item = tray.item()
    sign_in(application, 'demo@tarnwik.example', 'demo')
    wait_until(lambda: item.is_enabled('Connect'), 'Connect in the tray')
    item.press('Connect')
    wait_until(lambda: item.labels()[0] == 'Connected' and item.is_enabled('Disconnect'), 'the tunnel to be up')
    assert not item.is_enabled('Exit Node')
    entries = [entry for entry in item.entries() if entry['path'][0] == 'Exit Node']
    item.press('Exit Node', 'Japan · Osaka 1')
    stays_true(lambda: [entry for entry in item.entries() if entry['path'][0] == 'Exit Node'] == entries
               and application.find('combo box', 'Exit node').description == 'Finland · Helsinki 1',
               'the node that was chosen')
