"""What loading the provider costs against a library that does nothing, and what a start of the menu
program costs against a program that does nothing; each linked with the same libraries."""

import collections
import json
import os
import re
import time

import common

AIM_RATIO = 1.5

LOAD = common.PROGRAMS / "load"
VERSION = common.PROGRAMS / "version"
MENU = common.SHIPPED / "bin" / "ventaro"
LIBRARIES = common.PROGRAMS.parent / "lib"
EMPTY = LIBRARIES / "libempty.so"

PLATFORMS = {"host": common.SHIPPED / "lib" / "libventaro-platform.so",
             "bare": LIBRARIES / "libknows_nothing.so"}
LOADED = {"provider": common.PROVIDER, "empty": EMPTY}
STARTED = {"show": (MENU, "show"), "version": (MENU, "--version"), "baseline": (VERSION,)}
STEPS = ("dlopen", "create")

# Of the provider: 539 relocations, 105 bound symbols with GCC 12 on x86-64, and some reserve.
MOST_RELOCATIONS = 560
MOST_SYMBOLS = 110


# ---- measure ----

def needed(file):
    return sorted(re.findall(r"\(NEEDED\).*\[(.*)\]", common.run("readelf", "-dW", file)))


def relocations(file):
    """The number of relocations of each kind, and how many of them need a symbol lookup."""
    rows = [line.split() for line in common.run("readelf", "-rW", file).splitlines() if " R_" in line]
    kinds = collections.Counter(re.sub("^R_(X86_64|AARCH64|ARM|386)_", "", row[2]) for row in rows)
    named = sum(len(row) > 4 for row in rows)
    return {"kinds": dict(kinds), "named": named}


def load_all(variables):
    """Loads every library over every platform, each in a fresh process."""
    return {f"{platform} {library}": json.loads(common.run(LOAD, PLATFORMS[platform], LOADED[library], **variables).partition("\n")[0])
            for platform in PLATFORMS for library in LOADED}


def start(command, variables):
    """The nanoseconds that a whole process takes."""
    words = [str(word) for word in command]
    surroundings = common.environment(**variables)
    nowhere = [(os.POSIX_SPAWN_OPEN, 1, os.devnull, os.O_WRONLY, 0)]
    begin = time.perf_counter_ns()
    process = os.posix_spawn(words[0], words, surroundings, file_actions=nowhere)
    _, status = os.waitpid(process, 0)
    end = time.perf_counter_ns()
    if status != 0:
        raise SystemExit(f"bench: {' '.join(words)} failed")
    return end - begin


def measure(short, scratch):
    variables = common.folders(scratch)
    for file in LOADED.values():
        common.write_back(file)
    common.run(*STARTED["show"], **variables)  # creates the store
    rounds = 5 if short else 150
    loads = [load_all(variables) for _ in range(rounds)]
    starts = [{name: start(command, variables) for name, command in STARTED.items()} for _ in range(rounds)]
    return {
        "loads": {case: [run[case] for run in loads] for case in loads[0]},
        "starts": {name: [run[name] for run in starts] for name in STARTED},
        "needed": {name: needed(file) for name, file in
                   (("provider", common.PROVIDER), ("empty", EMPTY), ("menu", MENU), ("baseline", VERSION))},
        "relocations": {name: relocations(file) for name, file in LOADED.items()},
    }


def relocated(figures, name):
    return sum(figures["relocations"][name]["kinds"].values())


def bound(figures, name):
    return figures["relocations"][name]["named"]


def too_many(figures):
    limits = (("relocations", relocated, MOST_RELOCATIONS), ("bound symbols", bound, MOST_SYMBOLS))
    return [f"the provider has {count(figures, 'provider')} {what}, the limit is {most}"
            for what, count, most in limits if count(figures, "provider") > most]


def other_libraries(figures):
    libraries = figures["needed"]
    return [f"{ours} and {theirs} need different libraries: {libraries[ours]}, {libraries[theirs]}"
            for ours, theirs in (("provider", "empty"), ("menu", "baseline"))
            if libraries[ours] != libraries[theirs]]


def check(figures):
    return other_libraries(figures) + too_many(figures)


# ---- report ----

def times(figures, case, steps=STEPS):
    return [sum(run[step]["nanoseconds"] for step in steps) for run in figures["loads"][case]]


def loading_rows(figures):
    names = {"host": "over the host platform, which is loaded and in use",
             "bare": "over a bare platform, which returns nothing"}
    for platform, name in names.items():
        provider, empty = f"{platform} provider", f"{platform} empty"
        ratio = common.ratios(times(figures, provider), times(figures, empty))
        yield [name, common.with_spread(ratio), common.verdict(common.median(ratio), AIM_RATIO)] + [
            common.with_spread([time / 1000 for time in times(figures, case, steps)], 0)
            for case, steps in ((provider, ("dlopen",)), (provider, ("create",)), (empty, STEPS))]


def relocation_rows(figures):
    for name, shown in (("provider", "`libventaro.so`"), ("empty", "the empty library")):
        by_kind = figures["relocations"][name]["kinds"]
        kinds = ", ".join(f"{count} {kind}" for kind, count in sorted(by_kind.items(), key=lambda item: -item[1]))
        faults = (common.median([run[step]["faults"] for run in figures["loads"][f"host {name}"]]) for step in STEPS)
        yield [shown, bound(figures, name), kinds, *(f"{count:.0f}" for count in faults)]


def start_rows(figures):
    starts = figures["starts"]
    names = {"show": "`ventaro show`", "version": "`ventaro --version`",
             "baseline": "a program with the same libraries that prints its version"}
    for name, text in names.items():
        ratio = common.ratios(starts[name], starts["baseline"])
        yield [text, "1" if name == "baseline" else common.with_spread(ratio),
               f"{common.with_spread([time / 1e6 for time in starts[name]])} ms"]


def bars(figures):
    """The steps of each library, in µs: the loader's, what the platform adds to it, and the table."""
    def of(case, step):
        return common.median(times(figures, case, (step,))) / 1000
    bare = of("bare provider", "dlopen")  # without loading a platform
    return [["empty library", of("host empty", "dlopen"), 0, of("host empty", "create")],
            ["provider, bare platform", bare, 0, of("bare provider", "create")],
            ["provider, host platform", bare, max(of("host provider", "dlopen") - bare, 0),
             of("host provider", "create")]]


def draw_plot(figures, file):
    common.plot(file, """
set title "From dlopen() to a ready table"
set ylabel "µs"
set yrange [0:*]
set xrange [-0.5:2.5]
set style data histogram
set style histogram rowstacked
set style fill solid 0.8 border -1
set boxwidth 0.5
set key inside top left vertical Left reverse
plot $data0 using 2:xtic(1) title "dlopen()" lc rgb "#4477aa", \\
     "" using 3 title "what the host platform adds to it" lc rgb "#ee6677", \\
     "" using 4 title "create\\\\_provider()" lc rgb "#ccbb44"
""", [bars(figures)])


def faults(figures, case):
    return common.median([sum(run[step]["faults"] for step in STEPS) for run in figures["loads"][case]])


def excess(figures):
    """What the provider has more of than the empty library; each of these takes time."""
    more = {what: count(figures, "provider") - count(figures, "empty")
            for what, count in (("relocations", relocated), ("symbols that are looked up", bound))}
    more["page faults"] = faults(figures, "bare provider") - faults(figures, "bare empty")
    return ", ".join(f"{count:.0f} {what}" for what, count in more.items())


def report(figures, pictures):
    draw_plot(figures, pictures / "load.svg")
    loading = common.table(["loading", "ratio to the empty library", f"aim: {AIM_RATIO}", "dlopen, µs",
                            "create_provider, µs", "the empty library, both, µs"], loading_rows(figures))
    relocations = common.table(["library", "symbols bound", "relocations", "faults of dlopen",
                                "faults of create_provider"], relocation_rows(figures))
    starts = common.table(["start to end", "ratio", "time"], start_rows(figures))
    return f"""## Loading

From `dlopen(RTLD_NOW)` to the table of `create_provider()`, in fresh processes that have already loaded the
provider's libraries, compared with a library with the same dependencies and link options whose `create_provider()`
returns an empty table.

{loading}
![From dlopen to a ready table](performance/load.svg)

{relocations}
The menu program, from start to exit:

{starts}
- Over the bare platform, the provider has more than the empty library:
  {excess(figures)}.
- Over the host platform, its calls add to this: the constructors of the provider's objects query the network, its
  profiles and the store, and write log lines.
- A start of `ventaro show` opens the store and the network, loads the provider, draws the page and prints it.
"""
