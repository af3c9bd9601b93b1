"""Bytes of the store's file are flipped: reading ends, says what it found, and changes nothing."""

import collections
import json
import random

import attack

FILES = 300 * attack.TIMES
KEYS = 300


def value(number):
    return f"{number}:" + "v" * (6000 if number % 20 == 0 else 40)


def test_reading_a_file_with_flipped_bytes_ends_and_changes_nothing(tv):
    script = "".join(f"store set db/attack/{n} {value(n)} --type string\n" for n in range(KEYS))
    assert tv.run("shell", stdin=script).returncode == 0
    healthy = {f"db/attack/{n}": value(n) for n in range(KEYS)}
    data = tv.folder / "state" / "data.mdb"
    whole = data.read_bytes()
    chosen = random.Random(20261122)
    outcomes = collections.Counter()
    for _ in range(FILES):
        flipped = bytearray(whole)
        for _ in range(chosen.choice([1, 4, 16])):
            flipped[chosen.randrange(len(flipped))] ^= 1 << chosen.randrange(8)
        data.write_bytes(flipped)
        done = tv.run("store", "list", "db/attack/", "--json")
        if done.returncode < 0:
            outcomes[f"killed by {-done.returncode}"] += 1
        elif done.returncode:
            outcomes["error"] += 1
            print(done.stderr)
        else:
            stored = {entry["key"]: entry["value"] for entry in json.loads(done.stdout)}
            wrong = [k for k in stored.keys() & healthy.keys() if stored[k] != healthy[k]]
            lost = healthy.keys() - stored.keys()
            outcomes["intact" if stored == healthy else "wrong values" if wrong and not lost else "lost or other keys"] += 1
    print(outcomes)
    assert 0
