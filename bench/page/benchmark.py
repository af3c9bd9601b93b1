"""One drawing of the whole Network branch, as a framework makes it: what it costs, and where."""

import collections
import json

import common

AIM_MILLISECONDS = 1
AIM_OWN_SHARE = 0.10

PAGE = common.PROGRAMS / "page"
PAGE_CALLS = common.PROGRAMS / "page_calls"
MENU = common.SHIPPED / "bin" / "ventaro"
PLATFORM = common.SHIPPED / "lib" / "libventaro-platform.so"

# What the functions do, by their names; C++ ones as they are written.
WORK = {
    "__dlog_print": ("__dlog_print", "a line of the platform log"),
    "_ZN2ht14TSLoggerHelper3LogERKNS_14TSCodeLocationEPKcz":
        ("TSLoggerHelper::Log", "a record of the structured log, off"),
    "_ZN11CStringUtil16CombinateStringsEPcmPKcS2_S2_S2_S2_":
        ("CStringUtil::CombinateStrings", "a text's placeholders"),
    "dgettext": ("dgettext", "a text's translation"),
    "evas_textblock_text_utf8_to_markup": ("evas_textblock_text_utf8_to_markup", "a name as markup"),
    "system_info_get_custom_bool": ("system_info_get_custom_bool", "a feature flag"),
    "system_info_get_custom_int": ("system_info_get_custom_int", "a feature flag"),
    "system_info_get_custom_string": ("system_info_get_custom_string", "a feature flag"),
    "vconf_get_str": ("vconf_get_str", "a value of the store"),
    "vconf_get_int": ("vconf_get_int", "a value of the store"),
    "vconf_get_bool": ("vconf_get_bool", "a value of the store"),
    "wifi_get_connected_ap": ("wifi_get_connected_ap", "the network's state"),
}
# Where the platform's files are found, by its address, so that it must not be stood in for.
NOT_COUNTED = {"platform_mkpath"}
OWN = "the provider's own code"


def folders(scratch):
    return {"VENTARO_STATE_DIR": scratch / "state", "VENTARO_RUNTIME_DIR": scratch / "runtime"}


# ---- measure ----

def symbols(file, which):
    lines = common.run("nm", "-D", which, file).splitlines()
    return {line.split()[-1].partition("@")[0] for line in lines}


def uncounted(counted):
    """The platform functions of the provider that the programs do not count."""
    wanted = symbols(common.PROVIDER, "--undefined-only") & symbols(PLATFORM, "--defined-only")
    return sorted(wanted - counted - NOT_COUNTED)


def flattened(items):
    for item in items:
        yield item
        yield from flattened(item.get("items", []))


def wrong_answers(scratch):
    """Where the drawing and the menu program, which asks for itself, disagree."""
    shown = json.loads(common.run(MENU, "show", "--json", **folders(scratch)))
    menu = {item["key"]: item for item in flattened(shown)}
    drawn = common.run_json(PAGE, common.PROVIDER, **folders(scratch))
    wrong = [f"{key} is not drawn" for key in menu.keys() - {row[0] for row in drawn}]
    for key, callback, answer in drawn:
        expected = menu.get(key, {}).get(callback)
        if isinstance(expected, str) and expected != answer:
            wrong.append(f"{key}, {callback}: {answer!r}, the menu shows {expected!r}")
    return wrong


def library(path):
    return path.rpartition("/")[2].partition(".so")[0]


def costs(text):
    """What a callgrind file says line by line: the library that executes, the other one that it calls
    or itself, and the instructions. A call inside a library is part of that library's lines."""
    caller = callee = None
    is_call = False
    for line in text.splitlines():
        word, _, rest = line.partition("=")
        if word == "ob":
            caller = callee = library(rest)
        elif word == "cob":
            callee = library(rest)
        elif word == "calls":
            is_call = True
        elif line[:1].isdigit():
            if callee != caller or not is_call:
                yield caller, callee, int(line.split()[1])
            callee, is_call = caller, False


def instructions(scratch, drawings):
    """The instructions of a drawing that the provider executes itself, and those of what it calls,
    by library. The kernel's are not counted."""
    file = scratch / "callgrind"
    common.run("valgrind", "--quiet", "--tool=callgrind", "--instr-atstart=no", "--compress-strings=no",
               "--compress-pos=no", f"--callgrind-out-file={file}", PAGE, common.PROVIDER, drawings,
               **folders(scratch))
    own = library(str(common.PROVIDER))
    counts = collections.Counter()
    for caller, callee, count in costs(file.read_text(encoding="utf-8")):
        if caller == own:
            counts[callee] += count
    return {name: count / drawings for name, count in counts.items()}


def by_function(runs):
    """The calls and the median nanoseconds of each function that a drawing calls."""
    functions = {}
    for name, first in runs[0]["functions"].items():
        if first["calls"] > 0:
            functions[name] = {"calls": first["calls"],
                               "nanoseconds": [run["functions"][name]["nanoseconds"] for run in runs]}
    return functions


def own_part(run):
    return run["nanoseconds"] - sum(row["nanoseconds"] for row in run["functions"].values())


def measure(short, scratch):
    variables = folders(scratch)
    wrong = wrong_answers(scratch)
    pages, calls = [], []
    for _ in range(3 if short else 15):
        pages.append(common.run_json(PAGE, common.PROVIDER, 10 if short else 100, **variables))
        calls.append(common.run_json(PAGE_CALLS, common.PROVIDER, 10 if short else 100, **variables))
    wrong += [f"{name} is not counted" for name in uncounted(calls[0]["functions"].keys())]
    return {
        "wrong": wrong,
        "callbacks": pages[0]["calls"],
        "first": [page["first"] for page in pages],
        "first_faults": [page["first_faults"] for page in pages],
        "warm": [common.median(page["warm"]) for page in pages],
        "slowest": common.median([sorted(page["warm"])[int(len(page["warm"]) * 0.99)] for page in pages]),
        "functions": by_function(calls),
        "counted_page": [run["nanoseconds"] for run in calls],
        "own": [own_part(run) for run in calls],
        "overhead": common.median([run["overhead"] for run in calls]),
        "instructions": instructions(scratch, 1 if short else 5),
    }


def own_instructions(figures):
    counts = figures["instructions"]
    return counts["libventaro"] / sum(counts.values())


def check(figures):
    share = own_instructions(figures)
    too_much = [f"{share:.1%} of a page's instructions are the provider's own"] if share > AIM_OWN_SHARE else []
    return figures["wrong"] + too_much


# ---- report ----

def aims(figures):
    warm = [time / 1e6 for time in figures["warm"]]
    by_time = common.ratios(figures["own"], figures["counted_page"])
    by_instructions = own_instructions(figures)
    rows = [
        ["a page, warm", f"{common.with_spread(warm)} ms", f"{AIM_MILLISECONDS} ms",
         common.verdict(common.median(warm), AIM_MILLISECONDS)],
        ["of it outside the platform, by time", f"{100 * common.median(by_time):.1f} %",
         f"{100 * AIM_OWN_SHARE:.0f} %", common.verdict(common.median(by_time), AIM_OWN_SHARE)],
        ["of it in `libventaro.so` itself, by instructions", f"{100 * by_instructions:.1f} %",
         f"{100 * AIM_OWN_SHARE:.0f} %", common.verdict(by_instructions, AIM_OWN_SHARE)],
        ["the first page of a process",
         f"{common.with_spread([time / 1e6 for time in figures['first']])} ms", "", ""],
        ["the slowest of a hundred, warm", common.duration(figures["slowest"]), "", ""],
    ]
    return common.table(["", "measured", "aim", ""], rows)


def by_time(figures):
    """Rows of name, what it does, calls and nanoseconds of a page, the costliest first."""
    rows = []
    for name, row in figures["functions"].items():
        written, work = WORK.get(name, (name, ""))
        rows.append([f"`{written}`", work, row["calls"], common.median(row["nanoseconds"])])
    rows.append([f"{OWN}, jsoncpp, libc", "", None, common.median(figures["own"])])
    return sorted(rows, key=lambda row: -row[3])


def time_table(figures):
    whole = sum(row[3] for row in by_time(figures))
    rows = []
    for name, work, calls, nanoseconds in by_time(figures):
        rows.append([f"{name}: {work}" if work else name, f"{calls:.0f}" if calls else "",
                     common.duration(nanoseconds / calls) if calls else "",
                     f"{nanoseconds / 1000:.1f}", f"{100 * nanoseconds / whole:.1f} %"])
    return common.table(["function", "calls", "a call", "µs a page", "share"], rows)


def instruction_table(figures):
    names = {"libventaro": OWN, "libventaro-platform": "the platform, with all that it calls",
             "libc": "the C library", "libjsoncpp": "jsoncpp", "libstdc++": "the C++ library"}
    counts = sorted(figures["instructions"].items(), key=lambda item: -item[1])
    whole = sum(figures["instructions"].values())
    rows = [[names.get(name, name), f"{count:,.0f}", f"{100 * count / whole:.1f} %"]
            for name, count in counts if count > whole / 1000]
    return common.table(["called by the provider", "instructions a page", "share"], rows)


def draw_plot(figures, file):
    shown = by_time(figures)[:8]
    bars = [[index, row[3] / 1000, row[0].replace("`", "")] for index, row in enumerate(reversed(shown))]
    common.plot(file, f"""
set title "Where a page's time goes"
set xlabel "µs a page"
set ytics noenhanced
set key off
set xrange [0:{bars[-1][1] * 1.2}]
set yrange [-0.6:{len(bars) - 0.4}]
set style fill solid 0.8
plot $data0 using ($2 / 2):1:($2 / 2):(0.35):ytic(3) with boxxyerror lc rgb "#4477aa", \\
     $data0 using 2:1:(sprintf(" %.0f", $2)) with labels left
""", [bars])


def report(figures, pictures):
    draw_plot(figures, pictures / "page.svg")
    lines = figures["functions"]["__dlog_print"]["calls"]
    return f"""## A page

One drawing of the Network branch over the host platform, as a framework makes it: {figures["callbacks"]} calls of the
table and the checks for 16 items, and everything handed out given back.

{aims(figures)}
![Where a page's time goes](performance/page.svg)

{time_table(figures)}
{instruction_table(figures)}
- The times by function come from a run of its own, in which each platform function is timed; what that costs,
  {figures["overhead"]:.0f} ns a call, is taken off. What the platform calls in itself belongs to the function that was called.
- A page writes {lines:.0f} log lines, each of them formatted and then a write to a file: that is what limits it. On a TV these
  lines cost what the TV's log costs.
- Instructions are those of processes, without the kernel's, which writes the log files; so by time the platform's share is
  larger still.
"""
