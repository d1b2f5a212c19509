"""The application's windows, as a screen reader sees them."""

from dataclasses import dataclass

from gi.repository import Gio, GLib

from .waiting import wait_until

REGISTRY = ('org.a11y.atspi.Registry', '/org/a11y/atspi/accessible/root')
REGISTRY_EVENTS = ('org.a11y.atspi.Registry', '/org/a11y/atspi/registry', 'org.a11y.atspi.Registry')
NAME_CHANGES = 'object:property-change:accessible-name'
ACCESSIBLE = 'org.a11y.atspi.Accessible'
ACTION = 'org.a11y.atspi.Action'
COMPONENT = 'org.a11y.atspi.Component'
TEXT = 'org.a11y.atspi.Text'
PROPERTIES = 'org.freedesktop.DBus.Properties'
OF_THE_SCREEN = GLib.Variant('(u)', (0,))
WHOLE_TEXT = GLib.Variant('(ii)', (0, -1))
# Milliseconds. A program that hangs is a failure of the test, not a wait without end.
PATIENCE = 10000

STATES = {4: 'checked', 7: 'editable', 8: 'enabled', 11: 'focusable', 12: 'focused', 22: 'selectable', 23: 'selected',
          25: 'showing'}

# The role of a field for passwords, whose name Qt gives as that of any text field.
PASSWORD_TEXT = 40

# What a person can work with the keyboard, by the names of the roles.
CONTROL_ROLES = {'push button', 'toggle button', 'text', 'combo box', 'link', 'check box',
                 'radio button', 'menu item', 'push button menu'}


class _Bus:
    """The bus of the accessibility tree. Many questions are sent at once: one after the other they take ten times as
    long."""

    def __init__(self):
        session = Gio.bus_get_sync(Gio.BusType.SESSION)
        address = session.call_sync('org.a11y.Bus', '/org/a11y/bus', 'org.a11y.Bus', 'GetAddress', None, None,
                                    Gio.DBusCallFlags.NONE, PATIENCE).unpack()[0]
        self._connection = Gio.DBusConnection.new_for_address_sync(
            address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)

    def ask(self, calls):
        """The answers to all the calls, errors among them."""
        answers = {}
        for index, call in enumerate(calls):
            self.call(call, lambda answer, index=index: answers.update({index: answer}))
        while len(answers) < len(calls):
            GLib.MainContext.default().iteration(True)
        return [answers[index] for index in range(len(calls))]

    def call(self, call, take):
        """Sends one call (name, path, interface, method, arguments). The function is given the answer or the error."""
        def took(connection, result):
            try:
                answer = connection.call_finish(result).unpack()
            except GLib.Error as error:
                answer = error
            take(answer)

        self._connection.call(*call, None, Gio.DBusCallFlags.NONE, PATIENCE, None, took)

    def listen(self, interface, member, take):
        """Calls a function with what each such signal says; what is returned stops that."""
        def took(_connection, _sender, _path, _interface, _member, arguments):
            take(*arguments.unpack())

        number = self._connection.signal_subscribe(None, interface, member, None, None, Gio.DBusSignalFlags.NONE, took)
        return lambda: self._connection.signal_unsubscribe(number)

    def ask_one(self, *call):
        """One answer, or the error."""
        answer = self.ask([call])[0]
        if isinstance(answer, GLib.Error):
            raise answer
        return answer


_the_bus = None


def _bus():
    global _the_bus
    _the_bus = _the_bus or _Bus()
    return _the_bus


def _states(numbers):
    bits = numbers[0] | numbers[1] << 32
    return frozenset(name for number, name in STATES.items() if bits >> number & 1)


@dataclass(frozen=True)
class Node:
    """One object of the accessibility tree. What is read of it is what it is at that moment."""

    owner: str
    path: str

    def __repr__(self):
        try:
            return f'<{self.role} "{self.name}">'
        except GLib.Error:
            return '<gone>'

    def _get(self, interface, name):
        arguments = GLib.Variant('(ss)', (interface, name))
        return _bus().ask_one(self.owner, self.path, PROPERTIES, 'Get', arguments)[0]

    def _call(self, interface, method, arguments=None):
        return _bus().ask_one(self.owner, self.path, interface, method, arguments)[0]

    @property
    def role(self):
        return self._call(ACCESSIBLE, 'GetRoleName')

    @property
    def holds_password(self):
        """Whether it tells screen readers to keep what is typed there to themselves."""
        return self._call(ACCESSIBLE, 'GetRole') == PASSWORD_TEXT

    @property
    def name(self):
        return self._get(ACCESSIBLE, 'Name')

    @property
    def description(self):
        return self._get(ACCESSIBLE, 'Description')

    @property
    def states(self):
        return _states(self._call(ACCESSIBLE, 'GetState'))

    @property
    def is_enabled(self):
        return 'enabled' in self.states

    @property
    def is_focused(self):
        return 'focused' in self.states

    @property
    def is_selected(self):
        return 'selected' in self.states

    @property
    def is_shown(self):
        return 'showing' in self.states

    @property
    def children(self):
        return [Node(*child) for child in self._call(ACCESSIBLE, 'GetChildren')]

    @property
    def text(self):
        """What a text field holds; None where it has no text to read."""
        try:
            return self._call(TEXT, 'GetText', WHOLE_TEXT)
        except GLib.Error:
            return None

    @property
    def box(self):
        """Left, top, width and height on the screen."""
        return self._call(COMPONENT, 'GetExtents', OF_THE_SCREEN)

    @property
    def actions(self):
        return [name for name, _, _ in self._call(ACTION, 'GetActions')]

    def act(self, name):
        """Does an action that the object offers."""
        offered = self.actions
        assert name in offered, f'{self!r} offers {offered}, not {name}'
        self._call(ACTION, 'DoAction', GLib.Variant('(i)', (offered.index(name),)))

    def press(self):
        """Presses it as an assistive technology does."""
        self.act('Press')

    def seen(self, is_brief=False):
        """All that is shown of the object and below it, in the order of reading, as it is now.

        A brief look is quicker, and leaves out descriptions, boxes and actions.
        """
        return _read_tree(self, is_brief)

    def all(self, role=None, name=None, matches=None):
        """All that is shown below it, itself included, of that role and name, and as the function says."""
        return [seen.node for seen in self.seen(is_brief=matches is None)
                if (role is None or seen.role == role) and (name is None or seen.name == name)
                and (matches is None or matches(seen))]

    def has(self, role=None, name=None, matches=None):
        """Whether there is such a thing now."""
        return bool(self.all(role, name, matches))

    def find(self, role=None, name=None, matches=None, seconds=8.0):
        """The first such thing, as soon as there is one."""
        return wait_until(lambda: self.all(role, name, matches), f'a {role or "thing"} named {name!r} in {self!r}',
                          seconds)[0]

    def texts(self):
        """All names that are shown."""
        return [seen.name for seen in self.seen(is_brief=True) if seen.name]


@dataclass(frozen=True)
class Seen:
    """What an object of the accessibility tree was when it was read."""

    node: Node
    role: str
    name: str
    description: str
    states: frozenset
    # Left, top, width and height on the screen; all of them 0 where it has no size.
    box: tuple
    actions: tuple

    @property
    def is_enabled(self):
        return 'enabled' in self.states

    @property
    def is_focused(self):
        return 'focused' in self.states


BRIEF_QUESTIONS = [(ACCESSIBLE, 'GetState', None), (ACCESSIBLE, 'GetChildren', None), (ACCESSIBLE, 'GetRoleName', None),
                   (PROPERTIES, 'Get', GLib.Variant('(ss)', (ACCESSIBLE, 'Name')))]
QUESTIONS = [*BRIEF_QUESTIONS, (PROPERTIES, 'Get', GLib.Variant('(ss)', (ACCESSIBLE, 'Description'))),
             (COMPONENT, 'GetExtents', OF_THE_SCREEN), (ACTION, 'GetActions', None)]


def _read_tree(root, is_brief):
    """Reads level by level. What goes meanwhile is left out."""
    questions = BRIEF_QUESTIONS if is_brief else QUESTIONS
    found, children_of, level = {}, {}, [root]
    while level:
        answers = _bus().ask([(node.owner, node.path, *question) for node in level for question in questions])
        deeper = []
        for index, node in enumerate(level):
            states, children, role, name, *more = answers[index * len(questions):(index + 1) * len(questions)]
            if any(isinstance(answer, GLib.Error) for answer in (states, children, role, name)):
                continue
            states = _states(states[0])
            if 'showing' not in states:
                continue
            # What has no size or no actions answers with an error.
            description, box, actions = (None if isinstance(answer, GLib.Error) else answer[0]
                                         for answer in more or [[None]] * 3)
            found[node] = Seen(node, role[0], name[0], description or '', states, box or (0, 0, 0, 0),
                               tuple(entry[0] for entry in actions or ()))
            children_of[node] = [Node(*child) for child in children[0]]
            deeper += children_of[node]
        level = deeper

    def in_order(node):
        if node in found:
            yield found[node]
            for child in children_of[node]:
                yield from in_order(child)

    return list(in_order(root))


class NamesTold:
    """The new names that screen readers are told of, in their order: also those that do not last long."""

    def __init__(self):
        self._names = []
        _bus().ask_one(*REGISTRY_EVENTS, 'RegisterEvent', GLib.Variant('(s)', (NAME_CHANGES,)))
        self._stop = _bus().listen('org.a11y.atspi.Event.Object', 'PropertyChange', self._take)

    def _take(self, what, _first, _second, value, *_rest):
        # Qt tells whose name it is instead of the name.
        if what == 'accessible-name':
            _bus().call((*value, *BRIEF_QUESTIONS[-1]), self._append)

    def _append(self, answer):
        if not isinstance(answer, GLib.Error):
            self._names.append(answer[0])

    def __enter__(self):
        return self

    def __exit__(self, *_error):
        self._stop()
        _bus().ask_one(*REGISTRY_EVENTS, 'DeregisterEvent', GLib.Variant('(s)', (NAME_CHANGES,)))

    def among(self, interesting):
        """Those of the names that are of interest, each change once."""
        while GLib.MainContext.default().iteration(False):
            pass
        told = [name for name in self._names if name in interesting]
        return [name for index, name in enumerate(told) if index == 0 or name != told[index - 1]]


def application_of_process(process_id):
    """The root of a process's accessibility tree, or None while it has none."""
    for application in Node(*REGISTRY).children:
        try:
            owner = GLib.Variant('(s)', (application.owner,))
            if _bus().ask_one('org.freedesktop.DBus', '/org/freedesktop/DBus', 'org.freedesktop.DBus',
                              'GetConnectionUnixProcessID', owner)[0] == process_id:
                return application
        except GLib.Error:
            continue
    return None
