"""A simulated TV for each test: its own store, and the program to use it with."""

import codecs
import fcntl
import json
import os
import pathlib
import pty
import select
import shlex
import subprocess
import termios

import pytest

# The words that start the program: an emulator's come first where there is one.
PROGRAM = shlex.split(os.environ["VENTARO_PROGRAM"])
SHARE = pathlib.Path(os.environ["VENTARO_SHARE"])

# No test lasts this long; it only ends one that would hang.
GUARD_SECONDS = 120


class Process:
    """A program that runs beside the test."""

    def __init__(self, popen):
        self.popen = popen

    def line(self):
        """The next line of its output, without the line feed."""
        return self.popen.stdout.readline().rstrip("\n")

    def line_until(self, wanted):
        """Reads lines until the wanted one has come."""
        for line in self.popen.stdout:
            if line.rstrip("\n") == wanted:
                return
        raise AssertionError(f"the output ended without {wanted!r}")

    def error_line(self):
        return self.popen.stderr.readline().rstrip("\n")

    def type(self, line):
        self.popen.stdin.write(line + "\n")
        self.popen.stdin.flush()

    def interrupt(self):
        """Ends it as Ctrl-C does, and gives its exit code."""
        self.popen.send_signal(2)
        return self.popen.wait(GUARD_SECONDS)

    def finish(self):
        """Ends its input, waits, and gives its exit code."""
        self.popen.stdin.close()
        return self.popen.wait(GUARD_SECONDS)


class Person:
    """The program on a terminal of that size, its input and its output."""

    def __init__(self, words, env, columns, lines):
        self.leader, follower = pty.openpty()
        termios.tcsetwinsize(follower, (lines, columns))
        # The terminal is the program's own, so that Ctrl-C and a new size reach it.
        self.popen = subprocess.Popen(
            [*PROGRAM, *words], stdin=follower, stdout=follower, stderr=follower, env=env,
            start_new_session=True,
            preexec_fn=lambda: fcntl.ioctl(follower, termios.TIOCSCTTY, 0))
        os.close(follower)
        self.decoder = codecs.getincrementaldecoder("utf-8")()
        self.unread = ""

    def reads_until(self, wanted):
        """What is on the screen from here up to and including the wanted text."""
        while wanted not in self.unread:
            part = self.read()
            assert part, self.unread
            self.unread += part
        text, _, self.unread = self.unread.partition(wanted)
        return text + wanted

    def reads_to_the_end(self):
        """All that is shown until the program ends, with plain line feeds."""
        text = self.unread
        while part := self.read():
            text += part
        return text.replace("\r\n", "\n")

    def read(self):
        """What comes next; empty when nothing holds the terminal any more."""
        assert select.select([self.leader], [], [], GUARD_SECONDS)[0], self.unread
        try:
            return self.decoder.decode(os.read(self.leader, 4096))
        except OSError:
            return ""

    def answers(self, line):
        os.write(self.leader, f"{line}\n".encode())

    def types(self, keys):
        os.write(self.leader, keys.encode())

    def resizes(self, columns, lines):
        termios.tcsetwinsize(self.leader, (lines, columns))

    def leaves(self):
        code = self.popen.wait(GUARD_SECONDS)
        os.close(self.leader)
        return code


class Tv:
    program = PROGRAM

    def __init__(self, folder):
        self.folder = folder
        self.processes = []
        self.env = {
            "PATH": os.environ["PATH"],
            "VENTARO_STATE_DIR": str(folder / "state"),
            "VENTARO_RUNTIME_DIR": str(folder / "runtime"),
            "LANGUAGE": "en",
        }
        for name in ("ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"):
            if name in os.environ:
                self.env[name] = os.environ[name]
        self.use_scenario({**json.loads((SHARE / "scenarios/home.json").read_text()),
                           "connect_milliseconds": 1})

    def use_scenario(self, scenario):
        """Gives the TV another simulated network, from a dictionary or a file's text."""
        text = scenario if isinstance(scenario, str) else json.dumps(scenario, indent=2)
        path = self.folder / "scenario.json"
        path.write_text(text)
        self.env["VENTARO_SCENARIO"] = str(path)
        return path

    def run(self, *words, stdin=None, **env):
        """Runs the program to its end."""
        return subprocess.run([*PROGRAM, *words], input=stdin, capture_output=True, text=True,
                              env={**self.env, **env}, timeout=GUARD_SECONDS, check=False)

    def out(self, *words, **env):
        """The output of a call that must succeed."""
        done = self.run(*words, **env)
        assert done.returncode == 0, done.stderr
        assert done.stderr == ""
        return done.stdout

    def json(self, *words, **env):
        return json.loads(self.out(*words, "--json", **env))

    def error(self, code, *words, **env):
        """The error message of a call that must fail with that code."""
        done = self.run(*words, **env)
        assert done.returncode == code, (done.returncode, done.stdout, done.stderr)
        return done.stderr

    def start(self, *words, **env):
        """Starts the program beside the test; it ends with the test."""
        process = Process(subprocess.Popen(
            [*PROGRAM, *words], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
            stderr=subprocess.PIPE, text=True, env={**self.env, **env}))
        self.processes.append(process)
        return process

    def at_terminal(self, *words, columns=80, lines=50, **env):
        """Starts the program as a person does who sits before a terminal."""
        person = Person(words, {**self.env, "TERM": "xterm", **env}, columns, lines)
        self.processes.append(person)
        return person

    def on_screen(self, *words, **terminal):
        """All that a command shows on a terminal."""
        person = self.at_terminal(*words, **terminal)
        text = person.reads_to_the_end()
        assert person.leaves() == 0, text
        return text

    def watch(self, *keys):
        """Starts a watch of the store that is under way when this returns."""
        process = self.start("store", "watch", *keys)
        assert "watching" in process.error_line()
        return process

    def set(self, key, value, kind):
        self.out("store", "set", key, value, "--type", kind)

    def stored(self, key):
        return self.json("store", "get", key)["value"]

    def publish(self, *networks):
        """Publishes saved networks, each (ssid, strength, status), as the network service does."""
        values = [{"SSID": s, "SIGNAL_STRENGTH": d, "STATUS": t} for s, d, t in networks]
        self.set("db/menu/network/TopSavedAP",
                 json.dumps({"count": len(values), "values": values}), "string")

    def item(self, key, **env):
        return self.json("get", key, **env)


@pytest.fixture
def tv(tmp_path):
    television = Tv(tmp_path)
    yield television
    for process in television.processes:
        if process.popen.poll() is None:
            process.popen.kill()
        process.popen.wait()
        for stream in (process.popen.stdin, process.popen.stdout, process.popen.stderr):
            if stream is not None:
                stream.close()
