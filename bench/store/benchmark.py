"""The store beside LMDB alone, SQLite, GSettings and a file for each key."""

import contextlib
import tempfile
from pathlib import Path

import common

STORES = ("ventaro", "LMDB", "SQLite", "GSettings", "files")
PEERS = STORES[1:]
MOST_KEYS = 10_000  # of the stores that are left out beyond, for these reasons
LEFT_OUT = {
    "GSettings": "its schema would have to declare every key, and each set writes all values anew, which takes "
                 "milliseconds with 10,000 keys already",
    "files": "each file takes 4 KiB and an inode, so a million of them 4 GB, and minutes to make and to remove",
}
# The first of these that the store has room for is the largest size.
LARGEST = (1_000_000, 500_000, 200_000, 100_000)
GETS = ("get an integer", "get 32 bytes", "get 4 KiB")
SETS = ("set, volatile", "set, durable")
READERS = (1, 2, 3, 4)
READ_KEYS = 1_000
MODES = {"processes": STORES, "threads": tuple(store for store in STORES if store != "GSettings")}
NOTIFIERS = {("ventaro", "files"): 400, ("GSettings",): 40}  # how many sets
FULL = -7  # what a set returns when the store is full

GET_AIM = 1.5
SET_AIM = 1.2
NOTICE_AIM = 1e6  # nanoseconds


def run(name, places, *words):
    """Runs a program. Whatever ventaro is asked for, it may open both its stores, which must not be the user's."""
    durable, volatile = places
    return common.run_json(common.PROGRAMS / f"store_{name}", *words, VENTARO_STATE_DIR=f"{durable}/ventaro",
                           VENTARO_RUNTIME_DIR=f"{volatile}/ventaro")


@contextlib.contextmanager
def folders(disk, memory):
    with tempfile.TemporaryDirectory(dir=disk) as durable, tempfile.TemporaryDirectory(dir=memory) as volatile:
        yield durable, volatile


def operations(keys, short, disk, memory):
    stores = [store for store in STORES if keys <= MOST_KEYS or store not in LEFT_OUT]
    rounds, milliseconds, sets = (2, 1, 3) if short else (21, 15, 24)
    with folders(disk, memory) as places:
        return run("operations", places, *places, keys, rounds, milliseconds, sets, *stores)


def sizes(short, disk, memory):
    """The operations' times by number of keys, and the numbers there was no room for."""
    found = {keys: operations(keys, short, disk, memory)["times"] for keys in (100, 1_000 if short else MOST_KEYS)}
    too_many = []
    for keys in () if short else LARGEST:
        result = operations(keys, short, disk, memory)
        if "times" in result:
            found[keys] = result["times"]
            break
        too_many.append(keys)
    return found, too_many


def readers(short, disk, memory):
    """The reads a second of all readers, by mode, number of readers and store."""
    figures = {mode: {count: {store: [] for store in stores} for count in READERS} for mode, stores in MODES.items()}
    with folders(disk, memory) as places:
        for _ in range(1 if short else 9):
            for mode, counts in figures.items():
                for count, stores in counts.items():
                    for store, reads in stores.items():
                        result = run("readers", places, places[0], store, READ_KEYS, mode, count, 5 if short else 150)
                        reads.append(result["reads"])
    return figures


def notifications(short, disk, memory):
    """The nanoseconds to a call in another process and to the set's return, by durability and store."""
    times = {}
    for stores, sets in NOTIFIERS.items():
        with folders(disk, memory) as places:
            result = run("notification", places, *places, 3 if short else sets, 3, *stores)
        for durability, by_store in result.items():
            times.setdefault(durability, {}).update(by_store)
    return times


def capacity(short, disk, memory):
    with folders(disk, memory) as places:
        return run("capacity", places, 1_000 if short else LARGEST[0])


def measure(short, scratch):
    # What is volatile is kept in memory on a TV, so here, where there is such a folder.
    shared = Path("/dev/shm")
    with tempfile.TemporaryDirectory(dir=shared if shared.is_dir() else scratch) as memory:
        times, too_many = sizes(short, scratch, memory)
        return {"times": times, "too many": too_many, "readers": readers(short, scratch, memory),
                "notifications": notifications(short, scratch, memory), "capacity": capacity(short, scratch, memory)}


def check(figures):
    full = figures["capacity"]
    wrong = []
    if full["code"] not in (0, FULL):
        wrong.append(f"a set of a full store returned {full['code']}, not {FULL}")
    if full["wrong"] > 0:
        wrong.append(f"{full['wrong']} values of a full store differ from what was set")
    return wrong


def by_size(figures):
    """The times, with the sizes as numbers whether or not they went through JSON."""
    return {int(keys): times for keys, times in figures["times"].items()}


def ratio(times, peer):
    return common.ratios(times["ventaro"], times[peer])


def ratio_table(figures):
    rows = [[f"{operation}, {keys:,} keys"] +
            [common.with_spread(ratio(times[operation], peer)) if peer in times[operation] else "–" for peer in PEERS]
            for operation in GETS + SETS for keys, times in by_size(figures).items()]
    return common.table(["ventaro's time / the other's"] + list(PEERS), rows)


def time_table(figures):
    rows = [[f"{operation}, {keys:,} keys"] +
            [common.duration(common.median(times[operation][store])) if store in times[operation] else "–"
             for store in STORES]
            for operation in GETS + SETS for keys, times in by_size(figures).items()]
    return common.table(["an operation"] + list(STORES), rows)


def reader_table(figures):
    rows = []
    for mode, counts in figures["readers"].items():
        for count, reads in counts.items():
            name = f"{count} {mode if int(count) > 1 else mode.removesuffix('es' if mode == 'processes' else 's')}"
            rows.append([name, f"{common.median(reads['ventaro']) / 1e6:.2f}"] +
                        [common.with_spread(ratio(reads, peer)) if peer in reads else "–" for peer in PEERS])
    return common.table(["readers", "ventaro, millions a second"] + [f"/ {peer}" for peer in PEERS], rows)


def percentile_99(values):
    return sorted(values)[int(0.99 * (len(values) - 1))]


def notice_table(figures):
    rows = []
    for durability, by_store in figures["notifications"].items():
        for store in (store for store in STORES if store in by_store):
            calls, sets = zip(*by_store[store])
            rows.append([f"{store}, {durability}", len(calls), common.duration(common.median(calls)),
                         common.duration(percentile_99(calls)), common.duration(common.median(sets))])
    return common.table(["from the begin of a set in one process to the call in another", "sets", "median",
                         "99th percentile", "to the set's own return"], rows)


def medians(figures, operations, peers):
    return [common.median(ratio(times[operation], peer)) for times in by_size(figures).values()
            for operation in operations for peer in peers if peer in times[operation]]


def aim_table(figures):
    def row(aim, values, limit, show="{:.2f}".format):
        figure = show(max(values)) if len(values) == 1 else f"{show(min(values))} to {show(max(values))}"
        return [aim, figure, common.verdict(max(values), limit)]

    rows = [row(f"a get takes at most {GET_AIM} × LMDB's", medians(figures, GETS, ["LMDB"]), GET_AIM),
            row("a get takes less than each other store's", medians(figures, GETS, PEERS[1:]), 1),
            row(f"a durable set takes at most {SET_AIM} × LMDB's", medians(figures, SETS[1:], ["LMDB"]), SET_AIM)]
    rows += [row(f"a notification of a {durability} set takes at most {common.duration(NOTICE_AIM)}, in the median",
                 [common.median([call for call, _ in by_store["ventaro"]])], NOTICE_AIM, common.duration)
             for durability, by_store in figures["notifications"].items()]
    return common.table(["aim", "measured", "is"], rows)


KEY = 'set key outside right center vertical\nset linetype 5 lc rgb "#606060"\n'


def plot_gets(figures, file):
    times = by_size(figures)
    series = [[(keys, common.median(of["get an integer"][store])) for keys, of in times.items()
               if store in of["get an integer"]] for store in STORES]
    lines = ", ".join(f'$data{index} with linespoints lw 2 pt 7 title "{store}"'
                      for index, store in enumerate(STORES))
    common.plot(file, KEY + 'set title "Get an integer"\nset logscale xy\nset xrange [50:2e6]\nset yrange [100:*]\n'
                'set format x "10^{%T}"\nset xlabel "keys in the store"\nset ylabel "nanoseconds"\n'
                f"plot {lines}\n", series)


def plot_readers(figures, file):
    pairs = [(mode, store) for mode, stores in MODES.items() for store in stores]
    series = [[(int(count), common.median(reads[store]) / 1e6) for count, reads in figures["readers"][mode].items()]
              for mode, store in pairs]
    style = {mode: dash for mode, dash in zip(MODES, ("1", "2"))}
    lines = ", ".join(f'$data{index} with linespoints lw 2 pt 7 lc {STORES.index(store) + 1} dt {style[mode]} '
                      f'title "{store}, {mode}"' for index, (mode, store) in enumerate(pairs))
    common.plot(file, KEY + 'set title "Readers beside a writer"\nset xrange [0.8:4.2]\nset xtics 1\nset logscale y\n'
                'set xlabel "readers"\nset ylabel "million reads a second, all readers"\n'
                f"plot {lines}\n", series)


def room(figures):
    full = figures["capacity"]
    if full["code"] == 0:
        return f"has room for {full['keys']:,} keys and more."
    beyond = "".join(f"cannot be filled with {keys:,} keys, even in their order, and " for keys in figures["too many"])
    refused = "none" if full["sets refused"] == 0 else f"{full['sets refused']:,} of {full['sets tried']:,}"
    return (f"{beyond}has room for {full['keys']:,} keys that are set one by one in random order; then a set returns "
            f"`kNoSpace` ({full['code']}) and changes nothing, all that was stored can be read, and {refused} further "
            "sets of keys that are there were refused.")


def report(figures, pictures):
    plot_gets(figures, pictures / "store-get.svg")
    plot_readers(figures, pictures / "store-readers.svg")
    left_out = "; ".join(f"{store}, because {reason}" for store, reason in LEFT_OUT.items())
    return f"""## The store

{aim_table(figures)}
A store of N keys holds numbers and texts of 32 bytes, by halves, and 16 texts of 4 KiB; it was filled in the keys' order, and
keys are taken at random. "LMDB" is what the store is built on, without anything around it: one table, plain bytes, and a read transaction that
is kept and renewed for each get. SQLite has its log ahead (`WAL`), prepared statements, and `synchronous=FULL` where
durable. GSettings keeps a key file, of which it syncs the file but not the folder; "files" is a file for each key,
written beside, synced and renamed, and the folder synced. ventaro's gets also check the key and the value's type and
look for an injected fault; its sets also enter the change in the journal and wake the subscribers of other processes,
which none but GSettings does. "Durable" is on this machine's disk, whose sync is most of a durable set and varies;
"volatile" is in memory, without syncs where the store can do without.

{ratio_table(figures)}
{time_table(figures)}
![The time of a get by the number of keys](performance/store-get.svg)

With more than {MOST_KEYS:,} keys are left out: {left_out}. ventaro {room(figures)}

Readers get integers from {READ_KEYS:,} keys while one writer makes durable sets, each as fast as it can; with more readers
than processors they share these. Here more is better. GSettings has no threads, for its key file has no lock, and its
readers read a copy within their process that is not brought up to date meanwhile.

{reader_table(figures)}
![Reads a second by the number of readers](performance/store-readers.svg)

The other process waits in its GLib main loop, with nothing else going on. The call follows the sync of a durable set,
so it cannot come earlier than the disk allows. "files" watches its folder by inotify. GSettings watches by GIO's
monitor, which waits 100 ms before it reads on when an event has just come. LMDB and SQLite tell other processes of
nothing; they would have to be asked again and again.

{notice_table(figures)}"""
