"""The power fails while values are stored: what was acknowledged is there, and nothing that nobody stored.

The writes and syncs of one run are recorded and replayed up to a cut. What was not synced by then may be on the
disk or not, sector by sector."""

import copy
import json
import random

import attack
import disk
import strace

CUTS = 500 * attack.TIMES
KEYS = 12
SETS = 150

# What changes the store's file, the order of it, and what tells that a value is stored.
RECORDED = "openat,close,lseek,pwrite64,writev,write,fallocate,ftruncate,fdatasync,fsync"


def key(number):
    return f"db/attack/{number % KEYS}"


def value(number):
    """Small and large ones, so that a cut falls into transactions of every size."""
    return f"{number}:" + "v" * (9000 if number % 7 == 0 else 300 if number % 3 == 0 else 3)


def record(tv):
    """The calls of a run that makes a store and fills it, and tells each set that is done."""
    script = tv.folder / "script"
    script.write_text("".join(f"store set {key(n)} {value(n)} --type string\n" for n in range(1, SETS + 1)))
    said = tv.folder / "said"
    with open(script, encoding="utf-8") as lines, open(said, "w", encoding="utf-8") as output:
        calls = strace.calls_of(tv, ["shell"], "-e", f"trace={RECORDED}", *strace.WHOLE, stdin=lines, stdout=output)
    assert len(said.read_text().splitlines()) == SETS
    return calls


class Replay:
    """The store's file, and how many sets were acknowledged, up to a call."""

    def __init__(self):
        self.file = disk.File()
        self.acknowledged = 0
        self.output = None
        self.positions = {}  # of the store's descriptors
        self.synchronous = set()

    def carry_out(self, call):
        number = call.arguments.partition(",")[0]
        if call.name == "openat":
            return self.opened(call)
        if call.name == "write" and strace.strings(call.arguments)[0].startswith(b"db/attack/"):
            self.output = number
        if number == self.output:
            self.acknowledged += strace.strings(call.arguments)[0].count(b"\n")
        if number not in self.positions:
            return None
        return getattr(self, call.name)(number, call)

    def file_while(self, call):
        """The file with that call begun and not ended: a write may be there in part, a sync has promised nothing."""
        begun = copy.deepcopy(self)
        begun.synchronous = set()
        if "sync" not in call.name:
            begun.carry_out(call)
        return begun.file

    def opened(self, call):
        if not call.result.startswith("-") and strace.strings(call.arguments)[0].endswith(b"/state/data.mdb"):
            self.positions[call.result] = 0
            if "O_DSYNC" in call.arguments:
                self.synchronous.add(call.result)

    def close(self, number, _):
        del self.positions[number]
        self.synchronous.discard(number)

    def lseek(self, number, call):
        self.positions[number] = int(call.result)

    def write(self, number, call):
        self.writev(number, call)

    def writev(self, number, call):
        data = b"".join(strace.strings(call.arguments))
        self.store(number, self.positions[number], data, call)
        self.positions[number] += len(data)

    def pwrite64(self, number, call):
        offset = int(call.arguments.rpartition(",")[2])
        self.store(number, offset, strace.strings(call.arguments)[0], call)

    def store(self, number, offset, data, call):
        assert int(call.result) == len(data)
        self.file.write(offset, data)
        if number in self.synchronous:
            self.file.sync()

    def fallocate(self, _, call):
        offset, length = (int(word) for word in call.arguments.split(",")[-2:])
        self.file.write(offset, bytes(length))

    def ftruncate(self, _, call):
        self.file.truncate(int(call.arguments.rpartition(",")[2]))

    def fdatasync(self, *_):
        self.file.sync()

    fsync = fdatasync


def changes(call):
    """Whether the call writes, so that a cut before and after it differ."""
    return call.name in ("pwrite64", "writev", "fallocate", "ftruncate", "fdatasync", "fsync")


def expect_nothing_lost(tv, acknowledged, cut):
    stored = {entry["key"]: entry["value"] for entry in json.loads(tv.out("store", "list", "db/attack/", "--json"))}
    for name in map(key, range(KEYS)):
        of_key = [n for n in range(1, SETS + 1) if key(n) == name]
        last = max((n for n in of_key if n <= acknowledged), default=0)
        # The set that was under way may be there, too.
        allowed = [value(n) for n in of_key if n in (last, acknowledged + 1)]
        assert stored.get(name) in (allowed if last else [None, *allowed]), (cut, acknowledged, name)


def test_a_power_cut_loses_nothing_that_was_acknowledged(tv):
    calls = record(tv)
    moments = [number for number, call in enumerate(calls) if changes(call)]
    # All moments of the store's making, and others by chance.
    chosen = random.Random(20261122)
    cuts = sorted(moments[:40] + chosen.choices(moments, k=CUTS - 40))
    replay, done = Replay(), 0
    state = tv.folder / "state"
    for cut in cuts:
        while done < cut:
            replay.carry_out(calls[done])
            done += 1
        for file in state.glob("*.mdb"):
            file.unlink()
        (state / "data.mdb").write_bytes(replay.file_while(calls[cut]).after_a_cut(chosen))
        expect_nothing_lost(tv, replay.acknowledged, cut)
        tv.out("store", "set", "db/afterwards", "1", "--type", "int")
