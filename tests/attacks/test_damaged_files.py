"""Bytes of the store's file are flipped. There are no checksums in it, so a wrong value may go unnoticed; but what
is noticed is named, reading ends, and leaves nothing behind that would harm."""

import collections
import json
import random

import attack

FILES = 300 * attack.TIMES
KEYS = 300
MOST_KILLED = 0.03  # of the readers: LMDB follows what it finds in its pages


def value(number):
    return f"{number}:" + "v" * (6000 if number % 20 == 0 else 40)


VALUES = {f"db/attack/{number}": value(number) for number in range(KEYS)}


def flipped(whole, chosen):
    damaged = bytearray(whole)
    for _ in range(chosen.choice([1, 4, 16])):
        damaged[chosen.randrange(len(damaged))] ^= 1 << chosen.randrange(8)
    return damaged


def outcome(done):
    if done.returncode < 0:
        return "killed"
    if done.returncode:
        assert "damaged" in done.stderr, done.stderr
        return "an error"
    stored = {entry["key"]: entry["value"] for entry in json.loads(done.stdout)}
    if stored == VALUES:
        return "all values"
    return "a wrong value" if stored.keys() == VALUES.keys() else "another key"


def test_reading_a_file_with_flipped_bytes_ends_and_leaves_nothing_behind(tv):
    script = "".join(f"store set {key} {text} --type string\n" for key, text in VALUES.items())
    assert tv.run("shell", stdin=script).returncode == 0
    data = tv.folder / "state" / "data.mdb"
    whole = data.read_bytes()
    chosen = random.Random(20261122)
    outcomes = collections.Counter()
    for _ in range(FILES):
        data.write_bytes(flipped(whole, chosen))
        outcomes[outcome(tv.run("store", "list", "db/attack/", "--json"))] += 1
    print(dict(outcomes))
    assert outcomes["killed"] <= MOST_KILLED * FILES
    data.write_bytes(whole)
    assert outcome(tv.run("store", "list", "db/attack/", "--json")) == "all values"
