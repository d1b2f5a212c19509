"""The customer service, and what may stand between it and the program."""

import http.client
import json
import os
import random
import socket
import subprocess
import threading
import time
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer
from urllib.parse import urlsplit

from .processes import ENDS_WITH_TESTS

SERVICE_PROGRAM = os.environ['TARNWIK_SERVICE_PROGRAM']


class Service:
    """A tarnwik-service process."""

    def __init__(self, *arguments, port=0):
        self.process = subprocess.Popen([*ENDS_WITH_TESTS, SERVICE_PROGRAM, '--port', str(port), *arguments],
                                        stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True)
        line = self.process.stdout.readline()
        assert line.startswith('Listening on '), line
        self.url = line.split()[-1]

    @property
    def port(self):
        return urlsplit(self.url).port

    def close(self):
        if self.process.poll() is None:
            self.process.terminate()
        self.process.wait(10)
        self.process.stdout.close()


class Proxy:
    """Stands in front of the service, and treats each request as it is told.

    `behaviour` is called with method and path, and says what happens: "pass", "500", "garbage", "close", "stall" or
    a number of seconds to wait before the request is passed on.
    """

    def __init__(self, service):
        self.service = service
        self.behaviour = lambda method, path: 'pass'
        # Paths, and what is answered there instead of what the service would.
        self.answers = {}
        self.requests = []
        self._release = threading.Event()
        proxy = self

        class Handler(BaseHTTPRequestHandler):
            protocol_version = 'HTTP/1.1'

            def log_message(self, *arguments):
                pass

            def do_GET(self):
                proxy._answer(self)

            do_POST = do_DELETE = do_PUT = do_PATCH = do_GET

        class Server(ThreadingHTTPServer):
            daemon_threads = True

            def handle_error(self, request, client_address):
                """A client that hung up is what these tests are about."""

        self._server = Server(('127.0.0.1', 0), Handler)
        self.url = f'http://127.0.0.1:{self._server.server_port}'
        threading.Thread(target=self._server.serve_forever, args=(0.05,), daemon=True).start()

    def hold(self, part):
        """From now on requests whose path holds the part wait until they are released."""
        self._release.clear()
        self.behaviour = lambda method, path: 'stall' if part in path else 'pass'

    def release(self):
        """Passes on whatever waits, and all that comes."""
        self.behaviour = lambda method, path: 'pass'
        self._release.set()

    def count(self, part):
        """How many requests had the part in their path."""
        return sum(part in path for _, path in self.requests)

    def close(self):
        self.release()
        self._server.shutdown()
        self._server.server_close()

    def _answer(self, handler):
        length = int(handler.headers.get('Content-Length') or 0)
        body = handler.rfile.read(length) if length else None
        self.requests.append((handler.command, handler.path))
        if handler.path in self.answers:
            self._send(handler, 200, self.answers[handler.path], 'application/json')
            return
        what = self.behaviour(handler.command, handler.path)
        if what == 'stall':
            self._release.wait(60)
        elif isinstance(what, (int, float)):
            time.sleep(what)
        elif what == 'close':
            handler.close_connection = True
            handler.connection.shutdown(socket.SHUT_RDWR)
            return
        elif what == '500':
            self._send(handler, 500, b'Internal Server Error', 'text/plain')
            return
        elif what == 'garbage':
            self._send(handler, 200, b'{"nodes": [\xff\xfe', 'application/json')
            return
        self._pass_on(handler, body)

    def _pass_on(self, handler, body):
        connection = http.client.HTTPConnection('127.0.0.1', self.service.port, timeout=20)
        headers = {key: value for key, value in handler.headers.items()
                   if key.lower() in ('authorization', 'content-type', 'accept')}
        try:
            connection.request(handler.command, handler.path, body, headers)
            answer = connection.getresponse()
            self._send(handler, answer.status, answer.read(), answer.getheader('Content-Type') or 'application/json')
        except OSError:
            handler.close_connection = True
        finally:
            connection.close()

    @staticmethod
    def _send(handler, status, body, kind):
        try:
            handler.send_response(status)
            handler.send_header('Content-Type', kind)
            handler.send_header('Content-Length', str(len(body)))
            handler.end_headers()
            handler.wfile.write(body)
        except OSError:
            handler.close_connection = True


def failing_at_random(seed, share=0.4):
    """A behaviour for the proxy: so many of the requests fail, each in one of all the ways."""
    chance = random.Random(seed)
    lock = threading.Lock()

    def behaviour(method, path):
        with lock:
            if chance.random() >= share:
                return 'pass'
            return chance.choice(['500', 'garbage', 'close', 0.05, 0.3])

    return behaviour


def free_port():
    """A port on which nobody listens."""
    with socket.socket() as probe:
        probe.bind(('127.0.0.1', 0))
        return probe.getsockname()[1]


def seed_file(path, nodes=None, **account):
    """Writes what a service starts with: the project's example, with other nodes or another account; its path."""
    with open(os.environ['TARNWIK_SEED'], encoding='utf-8') as example:
        seed = json.load(example)
    seed['accounts'][0]['account'].update(account)
    if nodes is not None:
        seed['nodes'] = nodes
    path.write_text(json.dumps(seed), encoding='utf-8')
    return str(path)
