"""The store beside LMDB alone, SQLite and GSettings."""

import contextlib
import tempfile
from pathlib import Path

import common

STORES = ("ventaro", "LMDB", "SQLite", "GSettings")
PEERS = STORES[1:]
SIZES = (100, 10_000, 1_000_000)
MOST_KEYS = 10_000  # for GSettings
GETS = ("get an integer", "get 32 bytes", "get 4 KiB")
SETS = ("set, volatile", "set, durable")
READERS = (1, 2, 3, 4)
READ_KEYS = 1_000
DRAWN_KEYS = 8_192  # kSampleSize of contents.h
MODES = {"processes": STORES, "threads": tuple(store for store in STORES if store != "GSettings")}
NOTIFIERS = {"ventaro": 400, "GSettings": 40}  # how many sets

GET_AIM = 1.5
SET_AIM = 1.2
NOTICE_AIM = 1e6  # nanoseconds
ENOUGH = 100  # with fewer, the 99th percentile is hardly different from the worst


def run(name, places, *words):
    """Runs a program. ventaro may open both of its stores at any command; they must not be the user's."""
    durable, volatile = places
    return common.run_json(common.PROGRAMS / "store", name, *words, VENTARO_STATE_DIR=f"{durable}/ventaro",
                           VENTARO_RUNTIME_DIR=f"{volatile}/ventaro")


@contextlib.contextmanager
def empty_places(disk, memory):
    with tempfile.TemporaryDirectory(dir=disk) as durable, tempfile.TemporaryDirectory(dir=memory) as volatile:
        yield durable, volatile


def operations(keys, short, disk, memory):
    stores = [store for store in STORES if keys <= MOST_KEYS or store != "GSettings"]
    rounds, milliseconds, sets = (2, 1, 3) if short else (21, 15, 24)
    with empty_places(disk, memory) as places:
        return run("operations", places, *places, keys, rounds, milliseconds, sets, *stores)


def readers(short, disk, memory):
    """Reads per second of all readers, and sets of the writer, by mode, number of readers and store."""
    figures = {mode: {count: {store: [] for store in stores} for count in READERS} for mode, stores in MODES.items()}
    rounds, milliseconds = (1, 5) if short else (9, 150)
    with empty_places(disk, memory) as places:
        for _ in range(rounds):
            for mode, counts in figures.items():
                for count, stores in counts.items():
                    for store, runs in stores.items():
                        runs.append(run("readers", places, places[0], store, READ_KEYS, mode, count, milliseconds))
    return figures


def notifications(short, disk, memory):
    """The nanoseconds to a call in another process and to the set's return, by durability and store."""
    times = {}
    for store, sets in NOTIFIERS.items():
        with empty_places(disk, memory) as places:
            result = run("notification", places, *places, 3 if short else sets, 3, store)
        for durability, by_store in result.items():
            times.setdefault(durability, {}).update(by_store)
    return times


def measure(short, scratch):
    # A TV keeps volatile values in memory; so does this, if there is such a folder.
    shared = Path("/dev/shm")
    with tempfile.TemporaryDirectory(dir=shared if shared.is_dir() else scratch) as memory:
        return {"times": {keys: operations(keys, short, scratch, memory) for keys in SIZES[:2 if short else 3]},
                "readers": readers(short, scratch, memory), "notifications": notifications(short, scratch, memory)}


def check(_figures):
    """Nothing to check but times: a program that reads a wrong value fails by itself."""
    return []


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


def rates(stores, what):
    """The reads or sets per second of each run, by store."""
    return {store: [run[what] for run in runs] for store, runs in stores.items()}


def by_readers(figures, what):
    """The rows' names, and the rates of each."""
    for mode, counts in figures["readers"].items():
        for count, stores in counts.items():
            name = f"{count} {mode if int(count) > 1 else mode.removesuffix('es' if mode == 'processes' else 's')}"
            yield name, rates(stores, what)


def reader_table(figures):
    rows = [[name, f"{common.median(reads['ventaro']) / 1e6:.2f}"] +
            [common.with_spread(ratio(reads, peer)) if peer in reads else "–" for peer in PEERS]
            for name, reads in by_readers(figures, "reads")]
    return common.table(["readers", "ventaro, millions a second"] + [f"/ {peer}" for peer in PEERS], rows)


def writer_table(figures):
    rows = [[name] + [f"{common.median(sets[store]):,.0f} ± {100 * common.spread(sets[store]):.0f} %"
                      if store in sets else "–" for store in STORES]
            for name, sets in by_readers(figures, "sets")]
    return common.table(["the writer's sets a second beside"] + list(STORES), rows)


def percentile_99(values):
    return common.duration(sorted(values)[int(0.99 * (len(values) - 1))]) if len(values) >= ENOUGH else "–"


def after_return(calls, sets):
    """From each set's return to the call; negative if the call comes first."""
    return common.duration(common.median([call - end for call, end in zip(calls, sets)]))


def notice_table(figures):
    rows = []
    for durability, by_store in figures["notifications"].items():
        for store in (store for store in STORES if store in by_store):
            calls, sets = zip(*by_store[store])
            rows.append([f"{store}, {durability}", len(calls), common.duration(common.median(calls)),
                         percentile_99(calls), common.duration(common.median(sets)),
                         after_return(calls, sets) if durability == "durable" else "–"])
    return common.table(["from the start of a set in one process to the call in another", "sets", "median",
                         "99th percentile", "to the set's own return", "from that to the call"], rows)


def medians(figures, operations, peers):
    return [common.median(ratio(times[operation], peer)) for times in by_size(figures).values()
            for operation in operations for peer in peers if peer in times[operation]]


def aim_table(figures):
    def row(aim, values, limit, show="{:.2f}".format):
        figure = show(max(values)) if len(values) == 1 else f"{show(min(values))} to {show(max(values))}"
        return [aim, figure, common.verdict(max(values), limit)]

    rows = [row(f"a get takes at most {GET_AIM} × LMDB's", medians(figures, GETS, ["LMDB"]), GET_AIM),
            row("a get takes no longer than each other store's", medians(figures, GETS, PEERS[1:]), 1),
            row(f"a durable set takes at most {SET_AIM} × LMDB's", medians(figures, SETS[1:], ["LMDB"]), SET_AIM)]
    rows += [row(f"a notification of a {durability} set takes at most {common.duration(NOTICE_AIM)}, in the median",
                 [common.median([call for call, _ in by_store["ventaro"]])], NOTICE_AIM, common.duration)
             for durability, by_store in figures["notifications"].items()]
    return common.table(["aim", "measured", "is"], rows)


KEY = 'set key outside right center vertical\nset linetype 5 lc rgb "#606060"\n'


def plot_gets(figures, file):
    """As ratios: the sizes were measured one after the other, so their times cannot be compared."""
    gets = {keys: times["get an integer"] for keys, times in by_size(figures).items()}
    series = [[(keys, common.median(common.ratios(times[store], times["LMDB"]))) for keys, times in gets.items()
               if store in times] for store in STORES]
    lines = ", ".join(f'$data{index} with linespoints lw 2 pt 7 title "{store}"'
                      for index, store in enumerate(STORES))
    common.plot(file, KEY + 'set title "Get an integer"\nset logscale xy\nset xrange [50:2e6]\nset yrange [0.5:*]\n'
                'set format x "10^{%T}"\nset xlabel "keys in the store"\nset ylabel "time / that of LMDB"\n'
                f"plot {lines}\n", series)


def plot_readers(figures, file):
    pairs = [(mode, store) for mode, stores in MODES.items() for store in stores]
    series = [[(int(count), common.median(rates(stores, "reads")[store]) / 1e6)
               for count, stores in figures["readers"][mode].items()] for mode, store in pairs]
    style = {mode: dash for mode, dash in zip(MODES, ("1", "2"))}
    lines = ", ".join(f'$data{index} with linespoints lw 2 pt 7 lc {STORES.index(store) + 1} dt {style[mode]} '
                      f'title "{store}, {mode}"' for index, (mode, store) in enumerate(pairs))
    common.plot(file, KEY + 'set title "Readers beside a writer"\nset xrange [0.8:4.2]\nset xtics 1\nset logscale y\n'
                'set xlabel "readers"\nset ylabel "million reads a second, all readers"\n'
                f"plot {lines}\n", series)


def report(figures, pictures):
    plot_gets(figures, pictures / "store-get.svg")
    plot_readers(figures, pictures / "store-readers.svg")
    return f"""## The store

{aim_table(figures)}
A store of N keys holds 16 texts of 4 KiB; the rest are half numbers, half texts of 32 bytes. It was filled in key
order. {DRAWN_KEYS:,} keys of each kind were drawn at random, the same for all stores, and are used in turn, so most keys
of a larger store are not used. The stores of one size took turns, but the sizes were measured one after the other:
ratios can be compared between rows, times cannot.

- "LMDB" is the library below the store, used directly: one table, plain bytes, and a read transaction that is kept and
  renewed for each get.
- SQLite uses a write-ahead log, a mapped file, no internal lock, prepared statements, and `synchronous=FULL` for durable
  sets.
- GSettings keeps a key file; it syncs the file but not the folder.
- ventaro's gets also look up its named table, which LMDB requires in each transaction, check the key and the value's
  type, and check for an injected fault; its sets also add the change to the journal and wake the subscribers in other
  processes, which otherwise only GSettings does.
- "Durable" is on this machine's disk, whose sync varies; "volatile" is in memory, without syncs if the store allows
  that.

{ratio_table(figures)}
{time_table(figures)}
![The time of a get relative to LMDB's, by the number of keys](performance/store-get.svg)

With more than {MOST_KEYS:,} keys GSettings is left out: its schema would have to declare every key, and each set
rewrites all values, which takes milliseconds even with {MOST_KEYS:,} keys.

Readers get integers from {READ_KEYS:,} keys while one writer makes durable sets, each as fast as it can; with more
readers than processors, they share the processors. Here more is better. GSettings is not measured with threads, because
its key file has no lock; its readers read a copy in their own process that is not updated meanwhile.

{reader_table(figures)}
{writer_table(figures)}
![Reads per second by the number of readers](performance/store-readers.svg)

The other process waits in its GLib main loop, with nothing else going on. LMDB and SQLite do not notify
other processes; these would have to poll. With fewer than {ENOUGH} sets, no 99th percentile is given.

- ventaro and GSettings notify of a durable set after its sync, so the last column is the time after the set's return.
- GSettings watches with GIO's monitor, which waits 100 ms after an event before it reads the next one.

{notice_table(figures)}"""
