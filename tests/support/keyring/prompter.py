#!/usr/bin/python3
"""Stands in for the person whom gnome-keyring asks for a password.

prompter.py --log FILE ANSWER...

Owns the desktop's prompter name on the session bus and answers one question after the other; the last answer is given
again for every further question. An ANSWER is

  password:TEXT   types TEXT and presses the button that goes on
  late:TEXT       does the same, after half a second
  dismiss         closes the question
  ignore          leaves it open

Every question adds one line to FILE, which is created when the prompter can be asked.
"""

import argparse

import gi

gi.require_version("Gcr", "3")
from gi.repository import Gcr, Gio, GLib  # noqa: E402

NAME = "org.gnome.keyring.SystemPrompter"
PATH = "/org/gnome/keyring/Prompter"
CALLBACK = "org.gnome.keyring.internal.Prompter.Callback"
INTERFACE = """
<node><interface name="org.gnome.keyring.internal.Prompter">
  <method name="BeginPrompting"><arg type="o" direction="in"/></method>
  <method name="PerformPrompt">
    <arg type="o" direction="in"/><arg type="s" direction="in"/>
    <arg type="a{sv}" direction="in"/><arg type="s" direction="in"/>
  </method>
  <method name="StopPrompting"><arg type="o" direction="in"/></method>
</interface></node>
"""


class Prompter:
    def __init__(self, answers, log):
        self.answers = answers
        self.log = log
        self.exchanges = {}

    def register(self, connection, _name):
        self.connection = connection
        interface = Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0]
        connection.register_object(PATH, interface, self.called, None, None)

    def acquired(self, _connection, _name):
        self.note("")

    def note(self, text):
        with open(self.log, "a", encoding="utf-8") as log:
            log.write(text)

    def called(self, _connection, sender, _path, _interface, method, parameters, invocation):
        invocation.return_value(None)
        prompt = (sender, parameters[0])
        if method == "BeginPrompting":
            self.exchanges[prompt] = Gcr.SecretExchange.new(None)
            self.reply(prompt, "", self.exchanges[prompt].begin())
        elif method == "PerformPrompt":
            self.note(parameters[1] + "\n")
            self.exchanges[prompt].receive(parameters[3])
            self.answer(prompt)
        elif self.exchanges.pop(prompt, None):
            self.callback(prompt, "PromptDone", None)

    def answer(self, prompt):
        answer = self.answers.pop(0) if len(self.answers) > 1 else self.answers[0]
        kind, _, text = answer.partition(":")
        if kind == "password":
            self.enter(prompt, text)
        elif kind == "late":
            GLib.timeout_add(500, self.enter, prompt, text)
        elif kind == "dismiss":
            self.reply(prompt, "no", self.exchanges[prompt].send(None, 0))

    def enter(self, prompt, text):
        self.reply(prompt, "yes", self.exchanges[prompt].send(text, -1))
        return GLib.SOURCE_REMOVE

    def reply(self, prompt, text, exchange):
        self.callback(prompt, "PromptReady", GLib.Variant("(sa{sv}s)", (text, {}, exchange)))

    def callback(self, prompt, method, parameters):
        sender, path = prompt
        self.connection.call(sender, path, CALLBACK, method, parameters, None, Gio.DBusCallFlags.NONE, -1, None, None)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--log", required=True)
    parser.add_argument("answers", nargs="+")
    arguments = parser.parse_args()

    prompter = Prompter(arguments.answers, arguments.log)
    loop = GLib.MainLoop()
    Gio.bus_own_name(
        Gio.BusType.SESSION,
        NAME,
        Gio.BusNameOwnerFlags.NONE,
        prompter.register,
        prompter.acquired,
        lambda _connection, _name: loop.quit(),
    )
    loop.run()


if __name__ == "__main__":
    main()
