"""A signal at any moment of any command: the command ends, and leaves a store that works."""

import itertools
import random
import re
import shutil
import signal

import pytest

import attack
import strace

MOMENTS = 8 * attack.TIMES

COMMANDS = [
    "show",
    "get menu/network/WiFiOnOff",
    "watch",
    "list menu/network/WiFiOnOff",
    "box menu/network/WiFiOnOff",
    "choose menu/network/WiredEAP Off",
    "set menu/network/WiFiOnOff 0",
    "connect 2",
    "wait menu/network/WiFiOnOff On",
    "expect menu/network/WiFiOnOff On",
    "name Kitchen",
    "call get_int menu/network/WiFiOnOff",
    "texts --language ko --product tv",
    "store get db/attack/kept",
    "store list",
    "store set db/attack/number 2",
    "store unset db/attack/number",
    "store watch db/attack/number",
    "network serve",
    "network load home",
    "product list",
    "fault list",
    "fault set wifi_initialize -1",
    "fault clear",
    "feature list",
    "feature set network.network_support 0",
    "feature clear",
    "reset --yes",
    "shell",
]
ENDLESS = ("watch", "store watch", "network serve")

# Done before it came, ended with the exit code that a shell would show, or dead of it.
ENDED = {sent: (0, 128 + sent, -sent) for sent in (signal.SIGINT, signal.SIGTERM, signal.SIGKILL)}


def start_over(tv, home):
    for folder in ("state", "runtime"):
        shutil.rmtree(tv.folder / folder)
        shutil.copytree(home / folder, tv.folder / folder)


def end_when_waiting(words):
    return ["-e", "inject=poll:signal=SIGINT:when=1"] if words.startswith(ENDLESS) else []


def commands_of(tv, words=""):
    """The commands of the program, or of one of its commands."""
    text = tv.out(*words.split(), "--help")
    if "Subcommands:\n" not in text:
        return {words}
    listed = re.findall(r"^  (\w+)", text.split("Subcommands:\n")[1].split("\n\n")[0], re.MULTILINE)
    return set().union(*(commands_of(tv, f"{words} {name}".strip()) for name in listed))


def test_every_command_is_attacked(tv):
    assert [name for name in commands_of(tv) if not any(f"{words} ".startswith(f"{name} ") for words in COMMANDS)] == []


@pytest.mark.parametrize("words", COMMANDS)
def test_a_signal_at_any_moment_ends_a_command_and_harms_nothing(tv, words):
    tv.out("store", "set", "db/attack/kept", "1", "--type", "int")
    tv.out("store", "set", "db/attack/number", "1", "--type", "int")
    tv.out("show")  # makes the rest of the folders
    home = tv.folder / "home"
    for folder in ("state", "runtime"):
        shutil.copytree(tv.folder / folder, home / folder)
    script = "set menu/network/WiFiOnOff 0\nshow\nstore set db/attack/number 2\n" if words == "shell" else ""
    calls = [call.name for call in strace.calls_of(tv, words.split(), *end_when_waiting(words), input=script)]
    chosen = random.Random(words)
    signals = itertools.cycle(ENDED)
    for _ in range(MOMENTS):
        start_over(tv, home)
        moment = chosen.randrange(1, len(calls))
        name = calls[moment]
        at = f"{name}:signal={(sent := next(signals)).name}:when={calls[:moment + 1].count(name)}"
        done = strace.run(tv, words.split(), "-e", f"inject={at}", *end_when_waiting(words), input=script)
        assert done.returncode in ENDED[sent], (at, done.returncode, done.stderr)
        if words != "reset --yes":
            assert tv.stored("db/attack/kept") == 1, at
        tv.out("show")
