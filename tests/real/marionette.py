# SPDX-License-Identifier: MIT
"""Speaks with Firefox and Thunderbird by their own remote protocol."""

import json
import socket

from session import wait_until

# As people have it, not as tests like it.
PREFERENCES = {"remote.prefs.recommended": False}


class Marionette:
    def __init__(self, session, program):
        extra = {"MOZ_MARIONETTE_PREF_STATE_ACROSS_RESTARTS": json.dumps(PREFERENCES)}
        command = [program, "--headless", "--marionette", "--remote-allow-system-access"]
        self.session = session
        self.process = session.start(command, extra)
        self.socket = wait_until(self.connected, 60, f"{program} does not answer")
        self.buffer, self.number = b"", 0
        self.receive()
        self.send("WebDriver:NewSession", {})
        self.send("WebDriver:SetTimeouts", {"script": 30000, "pageLoad": 30000})

    def connected(self):
        if self.process.poll() is not None:
            raise RuntimeError("it ended at once")
        try:
            return socket.create_connection(("127.0.0.1", 2828), 60)
        except OSError:
            return None

    def receive(self):
        while b":" not in self.buffer:
            self.read()
        size, _, self.buffer = self.buffer.partition(b":")
        while len(self.buffer) < int(size):
            self.read()
        message, self.buffer = self.buffer[: int(size)], self.buffer[int(size) :]
        return json.loads(message)

    def read(self):
        data = self.socket.recv(65536)
        if not data:
            raise ConnectionError("it has gone")
        self.buffer += data

    def send(self, command, parameters):
        self.number += 1
        message = json.dumps([0, self.number, command, parameters]).encode()
        self.socket.sendall(str(len(message)).encode() + b":" + message)
        _, _, error, result = self.receive()
        if error:
            raise RuntimeError(
                f"{command}: {error['message']}\n{error.get('stacktrace', '')[:800]}"
            )
        return result

    def visit(self, address):
        self.send("Marionette:SetContext", {"value": "content"})
        self.send("WebDriver:Navigate", {"url": address})

    def inside(self, script, *arguments):
        """What an asynchronous function returns that runs with the program's own rights."""
        self.send("Marionette:SetContext", {"value": "chrome"})
        body = f"""const done = arguments[arguments.length - 1];
        const call = async (...args) => {{ {script} }};
        call(...Array.from(arguments).slice(0, -1)).then(
            value => done([value === undefined ? null : value, null]),
            error => done([null, String(error) + "\\n" + error.stack]));"""
        parameters = {"script": body, "args": list(arguments), "newSandbox": True}
        value, fault = self.send("WebDriver:ExecuteAsyncScript", parameters)["value"]
        if fault:
            raise RuntimeError(fault)
        return value

    def quit(self):
        """As its menu does. Says whether it ended by itself."""
        self.send("Marionette:SetContext", {"value": "chrome"})
        self.send("Marionette:Quit", {"flags": ["eAttemptQuit"]})
        self.socket.close()
        return self.session.end(self.process, 30)
