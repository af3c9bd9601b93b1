"""The disk is full from some write on: what was acknowledged stays, what was not is told, and with room again
everything goes on."""

import json

import pytest

import attack
import strace

SETS = 40
# The first write that finds no room: while the stores are made, or later.
LEVELS = range(1, 121, max(1, 6 // attack.TIMES))

# What needs room on the disk.
NEEDS_ROOM = "pwrite64,writev,fallocate,ftruncate"


def value(number):
    return f"{number}:" + "v" * (5000 if number % 5 == 0 else 50)


@pytest.mark.parametrize("level", LEVELS)
def test_a_full_disk_loses_nothing_that_was_acknowledged(tv, level):
    script = "".join(f"store set db/attack/{n} {value(n)} --type string\n" for n in range(SETS))
    done = strace.run(tv, ["shell"], "-e", f"inject={NEEDS_ROOM}:error=ENOSPC:when={level}+", input=script)
    acknowledged = [line.split(" = ") for line in done.stdout.splitlines()]
    errors = done.stderr.splitlines()
    assert len(acknowledged) + len(errors) == SETS or len(errors) == 1 and not acknowledged, done.stderr
    assert errors and done.returncode == 1
    assert all("No space left on device" in error for error in errors), done.stderr
    stored = {entry["key"]: entry["value"] for entry in json.loads(tv.out("store", "list", "db/attack/", "--json"))}
    for key, said in acknowledged:
        assert stored.pop(key) == said
    # A set that failed may be there all the same, whole, as after a power cut.
    assert all(stored[key] == value(int(key.rpartition("/")[2])) for key in stored)
    tv.out("store", "set", "db/attack/afterwards", "1", "--type", "int")
