"""Every callback beside its floor: instructions, allocations and time."""

import json
import re

import common

PROGRAM = common.PROGRAMS / "callbacks"

AIM = 1.10  # times the floor's instructions, for every callback
AIM_OF_PAGE = 1.05

# A callback finds its key among all that there are; the floor, which is written for one key, knows it.
FINDS = "finds its key"
UNIT = f"{FINDS}, and calls the object that the value belongs to"

# The functions that are above the aim: the most that they may take for any key, in times of the floor's
# instructions and in allocations more than the floor's; and why.
LIMITS = {
    "get_display_name": (2.35, 0, f"{FINDS}; one that it does not know is compared with each, for names are found by "
                                  "leading parts of keys, too"),
    "get_help_text": (2.20, 3, f"{FINDS}; a text with a product's or a device's name passes through functions of "
                               "`std::string`"),
    "get_string": (1.35, 0, FINDS),
    "get_int": (1.40, 0, UNIT),
    "set_int": (1.55, 0, UNIT),
    "get_title_icon_path": (1.45, 1, f"{FINDS}; the path is made as a `std::string`"),
    "get_second_icon_path": (1.35, 0, FINDS),
    "get_list_items": (1.55, 1, f"{FINDS}; the owner hands over the texts in an array of their own"),
    "check_visibility_int": (1.15, 0, "is made small: a mutex and a flag are functions of their own"),
    "check_enable_int": (2.10, 0, f"{FINDS}, which is half of the work where there is no more than two log lines"),
    "get_list_item_display_value": (1.50, 0, "looks how long the text is before it logs it"),
    "get_module_info": (2.20, 0, f"{FINDS}, beside which there is only the lock"),
}
KEY_SEARCH = 100  # instructions
LIMIT_OF_PAGE = 1.23
MORE_ALLOCATIONS_OF_PAGE = 29


def instructions(scratch):
    """What each case of `callbacks --counts` took: instructions for one call, and allocations."""
    pattern = scratch / "dump"
    # A `rep stos` of the C library counts as many instructions as it has steps, and which libraries
    # and processors use it differs: it is switched off.
    output = common.run("valgrind", "--tool=callgrind", "--collect-atstart=no", f"--callgrind-out-file={pattern}",
                        PROGRAM, common.PROVIDER, "--counts",
                        GLIBC_TUNABLES="glibc.cpu.x86_rep_stosb_threshold=1000000000")
    counted = json.loads(output)
    # One dump for each count, numbered from 1; the first is what counting itself costs.
    totals = [int(re.search(r"^totals: (\d+)", (scratch / f"dump.{number}").read_text(), re.M).group(1))
              for number in range(1, 2 * len(counted["cases"]) + 2)]
    calls = counted["calls"]
    own = totals.pop(0)
    for case, provider, floor in zip(counted["cases"], totals[0::2], totals[1::2]):
        case["instructions"] = {"provider": (provider - own) / calls, "floor": (floor - own) / calls}
        case["allocations"] = {side: count / calls for side, count in case["allocations"].items()}
    return counted["cases"]


def measure(short, scratch):
    common.run(PROGRAM, common.PROVIDER, "--check")
    cases = instructions(scratch)
    times = common.run_google_benchmark(PROGRAM, short, common.PROVIDER, repetitions=9, min_time=0.004)
    for case in cases:
        name = f"{case['function']} {case['key']}"
        case["nanoseconds"] = {side: times[f"{name} {side}"] for side in ("provider", "floor")}
    return {"cases": cases}


def ratio(case, measured):
    """As it is shown, to two digits."""
    floor = case[measured]["floor"]
    return round(case[measured]["provider"] / floor, 2) if floor else 1.0


def page(figures, measured):
    """The sums over the calls that draw a page."""
    return {side: sum(case["calls_per_page"] * case[measured][side] for case in figures["cases"])
            for side in ("provider", "floor")}


def more_allocations(case):
    return case["allocations"]["provider"] - case["allocations"]["floor"]


def by_function(figures):
    functions = {}
    for case in figures["cases"]:
        functions.setdefault(case["function"], []).append(case)
    return functions


def check(figures):
    wrong = []
    for function, cases in by_function(figures).items():
        most, more, _ = LIMITS.get(function, (AIM, 0, ""))
        for case in cases:
            name = f"{function}({case['key']})"
            if more_allocations(case) > more:
                wrong.append(f"{name}: {case['allocations']['provider']:g} allocations are {more_allocations(case):g} "
                             f"more than the floor's, at most {more} may be")
            if ratio(case, "instructions") > most:
                wrong.append(f"{name}: {case['instructions']['provider']:.0f} instructions are "
                             f"{ratio(case, 'instructions'):.2f} times the floor's, at most {most} may be")
    whole = page(figures, "instructions")
    if whole["provider"] > LIMIT_OF_PAGE * whole["floor"]:
        wrong.append(f"a page: {whole['provider'] / whole['floor']:.3f} times the floor's instructions, "
                     f"at most {LIMIT_OF_PAGE} may be")
    allocations = page(figures, "allocations")
    if allocations["provider"] - allocations["floor"] > MORE_ALLOCATIONS_OF_PAGE:
        wrong.append(f"a page: {allocations['provider']:g} allocations, the floor has {allocations['floor']:g}, "
                     f"at most {MORE_ALLOCATIONS_OF_PAGE} more may be")
    return wrong


# ---- report ----

def time_ratios(cases):
    """Round by round, the sum over a function's keys; they ran in turns."""
    rounds = range(len(cases[0]["nanoseconds"]["provider"]))
    return [sum(case["nanoseconds"]["provider"][turn] for case in cases) /
            sum(case["nanoseconds"]["floor"][turn] for case in cases) for turn in rounds]


def page_times(figures):
    rounds = range(len(figures["cases"][0]["nanoseconds"]["provider"]))
    return {side: [sum(case["calls_per_page"] * case["nanoseconds"][side][turn] for case in figures["cases"])
                   for turn in rounds] for side in ("provider", "floor")}


def page_table(figures):
    instructions, allocations, times = (page(figures, "instructions"), page(figures, "allocations"),
                                        page_times(figures))
    share = instructions["provider"] / instructions["floor"]
    rows = [["instructions", f"{instructions['provider']:,.0f}", f"{instructions['floor']:,.0f}", f"{share:.2f}",
             f"{AIM_OF_PAGE}", common.verdict(share, AIM_OF_PAGE)],
            ["allocations", f"{allocations['provider']:g}", f"{allocations['floor']:g}",
             f"{allocations['provider'] / allocations['floor']:.2f}", "1",
             common.verdict(allocations["provider"], allocations["floor"])],
            ["time", common.duration(common.median(times["provider"])), common.duration(common.median(times["floor"])),
             common.with_spread(common.ratios(times["provider"], times["floor"])), "", ""]]
    return common.table(["a page's", "provider", "floor", "ratio", "aim", ""], rows)


def function_table(figures):
    rows = []
    for function, cases in by_function(figures).items():
        shares = [ratio(case, "instructions") for case in cases]
        worst = max(shares)
        rows.append([f"`{function}`", len(cases), f"{common.median(shares):.2f}", f"{worst:.2f}",
                     common.verdict(worst, AIM), f"{max(more_allocations(case) for case in cases):+g}",
                     common.with_spread(time_ratios(cases)), LIMITS.get(function, (0, 0, ""))[2]])
    heads = ["function", "keys", "instructions, median", "worst key", f"aim {AIM:.2f}", "allocations", "time", "why"]
    return common.table(heads, rows)


def plot_functions(figures, file):
    rows = sorted((common.median([ratio(case, "instructions") for case in cases]), function)
                  for function, cases in by_function(figures).items())
    bars = [[index, share, function] for index, (share, function) in enumerate(rows)]
    common.plot(file, f"""
set terminal svg size 800,620 background "white" font "sans,12"
set title "Instructions of a call, in times of its floor's (median over the keys)"
set ytics noenhanced
set key off
set xrange [0:{rows[-1][0] * 1.15}]
set yrange [-0.6:{len(rows) - 0.4}]
set style fill solid 0.8
set arrow from {AIM},-0.6 to {AIM},{len(rows) - 0.4} nohead dt 2
plot $data0 using ($2 / 2):1:($2 / 2):(0.35):ytic(3) with boxxyerror lc rgb "#4477aa", \\
     $data0 using 2:1:(sprintf(" %.2f", $2)) with labels left
""", [bars])


def report(figures, pictures):
    plot_functions(figures, pictures / "callbacks.svg")
    calls = sum(case["calls_per_page"] for case in figures["cases"] if FINDS in LIMITS.get(case["function"], (0, 0, ""))[2])
    share = 100 * calls * KEY_SEARCH / page(figures, "instructions")["floor"]
    return f"""## The callbacks

Every function for every key over a platform that costs nothing, beside its *floor*: the smallest C that makes the same
platform calls with the same arguments, the same log calls and gives the same results, for one key and one state. That it does the same
is checked before it is measured.

{page_table(figures)}
![Instructions beside the floor's](performance/callbacks.svg)

{function_table(figures)}
- Instructions are counted by callgrind and do not depend on the machine's load; the time is that of {len(figures['cases'])} pairs in turns.
- The provider is measured as it is shipped, made small (`-Os`), while the floor is made fast (`-O2`).
- To find a key takes about {KEY_SEARCH} instructions: its length, a number made of that and of its last letter, one
  comparison. In a page {calls} calls do so, for which that alone is {share:.0f} % of
  the floor's instructions.
"""
