"""One drawing of the whole Network branch, as a framework makes it: what it costs, and where."""

import collections
import statistics

import common

AIM_MILLISECONDS = 1
AIM_OWN_SHARE = 0.10
AGREEING = 0.20  # two programs' times for the same work differ by no more than this

PAGE = common.PROGRAMS / "page"
PAGE_CALLS = common.PROGRAMS / "page_calls"

# What the functions do.
WORK = {
    "__dlog_print": "a line of the platform log",
    "ht::TSLoggerHelper::Log": "a record of the structured log, off",
    "CStringUtil::CombinateStrings": "a text's placeholders",
    "dgettext": "a text's translation",
    "evas_textblock_text_utf8_to_markup": "a name as markup",
    "system_info_get_custom_bool": "a feature flag",
    "system_info_get_custom_int": "a feature flag",
    "system_info_get_custom_string": "a feature flag",
    "vconf_get_str": "a value of the store",
    "vconf_get_int": "a value of the store",
    "vconf_get_bool": "a value of the store",
    "wifi_get_connected_ap": "the network's state",
}
OWN = "the provider's own code"

# What a drawing calls in the platform, and how often. It does not vary.
CALLS = {
    "__dlog_print": 636,
    "ht::TSLoggerHelper::Log": 636,
    "CStringUtil::CombinateStrings": 1,
    "dgettext": 52,
    "evas_textblock_text_utf8_to_markup": 1,
    "system_info_get_custom_bool": 39,
    "system_info_get_custom_int": 7,
    "system_info_get_custom_string": 2,
    "util_get_wakeOnMobile_mode": 2,
    "vconf_get_int": 5,
    "vconf_get_str": 46,
    "wifi_ap_destroy": 2,
    "wifi_ap_get_frequency": 2,
    "wifi_get_connected_ap": 2,
    "wifi_get_enable_qx": 2,
    "wifi_initialize": 2,
}
# The provider's own instructions of a drawing: 41,139 with GCC 12 on x86-64, and some room.
MOST_INSTRUCTIONS = 43_000

# ---- measure ----



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
               **common.folders(scratch))
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
    variables = common.folders(scratch)
    pages, calls = [], []
    for _ in range(3 if short else 15):
        pages.append(common.run_json(PAGE, common.PROVIDER, 10 if short else 100, **variables))
        calls.append(common.run_json(PAGE_CALLS, common.PROVIDER, 10 if short else 100, **variables))
    return {
        "callbacks": pages[0]["calls"],
        "first": [page["first"] for page in pages],
        "warm": [common.median(page["warm"]) for page in pages],
        "mean": [statistics.fmean(page["warm"]) for page in pages],
        "slowest": common.median([sorted(page["warm"])[int(len(page["warm"]) * 0.99)] for page in pages]),
        "functions": by_function(calls),
        "counted_page": [run["nanoseconds"] for run in calls],
        "own": [own_part(run) for run in calls],
        "overhead": common.median([run["overhead"] for run in calls]),
        "instructions": instructions(scratch, 1 if short else 5),
    }


def own_instructions(figures):
    return figures["instructions"]["libventaro"]


def own_share(figures):
    return own_instructions(figures) / sum(figures["instructions"].values())


def wrong_calls(figures):
    calls = {name: row["calls"] for name, row in figures["functions"].items()}
    return [f"a page calls {name} {calls.get(name, 0):g} times, not {CALLS.get(name, 0)}"
            for name in sorted(CALLS.keys() | calls.keys()) if calls.get(name, 0) != CALLS.get(name, 0)]


def too_many_instructions(figures):
    own, share = own_instructions(figures), own_share(figures)
    wrong = []
    if own > MOST_INSTRUCTIONS:
        wrong.append(f"a page takes {own:,.0f} instructions of the provider's own, at most {MOST_INSTRUCTIONS:,} "
                     "may be")
    if share > AIM_OWN_SHARE:
        wrong.append(f"{share:.1%} of a page's instructions are the provider's own")
    return wrong


def check(figures):
    return wrong_calls(figures) + too_many_instructions(figures)


# ---- report ----

def aims(figures):
    warm = [time / 1e6 for time in figures["warm"]]
    by_time = common.ratios(figures["own"], figures["counted_page"])
    by_instructions = own_share(figures)
    rows = [
        ["a page, warm", f"{common.with_spread(warm)} ms", f"{AIM_MILLISECONDS} ms",
         common.verdict(common.median(warm), AIM_MILLISECONDS)],
        ["of it outside the platform, by time", f"{100 * common.median(by_time):.1f} %",
         f"{100 * AIM_OWN_SHARE:.0f} %", common.verdict(common.median(by_time), AIM_OWN_SHARE, digits=3)],
        ["of it in `libventaro.so` itself, by instructions", f"{100 * by_instructions:.1f} %",
         f"{100 * AIM_OWN_SHARE:.0f} %", common.verdict(by_instructions, AIM_OWN_SHARE, digits=3)],
        ["the first page of a process",
         f"{common.with_spread([time / 1e6 for time in figures['first']])} ms", "", ""],
        ["the slowest of a hundred, warm", common.duration(figures["slowest"]), "", ""],
    ]
    return common.table(["", "measured", "aim", ""], rows)


def by_time(figures):
    """Rows of name, purpose, calls and nanoseconds per page, the costliest first."""
    rows = []
    for name, row in figures["functions"].items():
        rows.append([f"`{name}`", WORK.get(name, ""), row["calls"], common.median(row["nanoseconds"])])
    rows.append([f"{OWN}, jsoncpp, libc", "", None, common.median(figures["own"])])
    return sorted(rows, key=lambda row: -row[3])


def time_table(figures):
    whole = sum(row[3] for row in by_time(figures))
    rows = []
    for name, work, calls, nanoseconds in by_time(figures):
        rows.append([f"{name}: {work}" if work else name, f"{calls:.0f}" if calls else "",
                     common.duration(nanoseconds / calls) if calls else "",
                     f"{nanoseconds / 1000:.1f}", f"{100 * nanoseconds / whole:.1f} %"])
    rows.append(["all", "", "", common.with_spread([time / 1000 for time in figures["counted_page"]], 1), ""])
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
    bars = [(row[3] / 1000, row[0].replace("`", "")) for row in reversed(shown)]
    common.plot_bars(file, "Where a page's time goes", bars, more='set xlabel "µs a page"')


def agreement(figures):
    """Whether the program that times each function, in means, agrees on the time of a page."""
    ratio = common.ratios(figures["counted_page"], figures["mean"])
    apart = abs(common.median(ratio) - 1) > AGREEING
    return (f"They are means;\n  all together are {common.with_spread(ratio)} times the mean of the pages above" +
            (", **so only the shares are meaningful, not the times**." if apart else "."))


def log_lines(figures):
    lines = figures["functions"]["__dlog_print"]
    share = common.median(common.ratios(lines["nanoseconds"], figures["counted_page"]))
    return (f"A page writes {lines['calls']:.0f} log lines, each formatted and written to a file, which\n"
            f"  takes {100 * share:.0f} % of its time.")


def report(figures, pictures):
    draw_plot(figures, pictures / "page.svg")
    return f"""## A page

One drawing of the Network branch over the host platform, as a framework makes it: {figures["callbacks"]} calls of the
table and the checks for 16 items, with everything handed out returned.

{aims(figures)}
![Where a page's time goes](performance/page.svg)

{time_table(figures)}
{instruction_table(figures)}
- The times by function come from a separate run, in which each platform function is timed; the cost of that,
  {figures["overhead"]:.0f} ns per call, is subtracted. Calls inside the platform belong to the function that was
  called. {agreement(figures)}
- {log_lines(figures)} On a TV these lines cost what the TV's log costs.
- Instructions do not include those of the kernel, which writes the log files.
"""
