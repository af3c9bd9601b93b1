"""Every callback beside its floor: instructions and allocations."""

import csv
import io
from pathlib import Path

import common

PROGRAM = common.PROGRAMS / "callbacks"
FLOORS = common.PROGRAMS.parent / "lib" / "libfloors.so"
SIDES = ("provider", "floor")

AIM = 1.10  # times the floor's instructions, for every callback
AIM_OF_PAGE = 1.05

# What each case took when it was last accepted; `bench/run --accept` writes it. Cases with equal figures
# share a row.
EXPECTED = Path(__file__).resolve().parent / "expected.csv"
FIGURES = [f"{side}_{measured}" for measured in ("instructions", "allocations") for side in SIDES] + ["steps"]
BETWEEN_KEYS = " | "
RATIO_TOLERANCE = 0.02
FLOOR_TOLERANCE = 0.03  # a worse floor improves the ratio
# The C library compares a short text in up to six more when it ends near the end of a page, which is the linker's
# choice: any other text of the provider moves it. The floor looks up no key.
LAYOUT_TOLERANCE = 6.5  # instructions; the half is for rounding
HOW_TO_ACCEPT = "if these figures are right, accept them with bench/run --accept"

# A callback has to look up its key; the floor is written for one key.
FINDS = "finds its key"
UNIT = f"{FINDS}, and calls the object that the value belongs to"
READS = "the saved networks are kept in `std::string`s, which functions compare and pass on"

# Why a function is above the aim for some keys, found with callgrind_annotate on both sides' dumps.
REASONS = {
    "get_display_name": f"{FINDS}; an unknown one is compared with every key, because names are also "
                        f"found by prefix; {READS}",
    "get_help_text": f"{FINDS}; a text with a product's or a device's name is composed by functions of "
                     "`std::string`, while the floor copies it; `strncpy` then copies it and fills the rest of 2 KiB",
    "get_string": UNIT,
    "get_int": UNIT,
    "set_int": f"{UNIT}; for a saved network, builds the command that jsoncpp writes; the floor has it ready",
    "get_title_icon_path": f"{FINDS}; a network's path is built as a `std::string`, and every path is measured before "
                           f"it is copied; {READS}",
    "get_second_icon_path": f"{READS}; {FINDS}",
    "get_list_items": "the setting returns the texts in a separate array, the largest part; each is measured "
                      f"before it is copied; {FINDS}",
    "check_visibility_int": "reads the feature flag in separate functions, and checks the result",
    "check_enable_int": f"{FINDS}, which is most of its work: besides, it takes the lock and logs a line; {READS}",
    "get_list_item_display_value": "looks for the end of the text before it logs it, because one that fills its block "
                                   "has none",
    "get_list_item_following_action_type": "checks its two arguments for null",
    "get_messagebox_info": "composes the text in a buffer that it clears first, and appends it and the buttons' "
                           "texts to the caller's buffers",
    "get_module_info": f"{FINDS}; besides, it only takes the lock",
}
# The only call of a page that parses JSON. jsoncpp costs the same on both sides, and hides the rest.
PARSES = ("check_enable_int", "menu/network/devicename")


# ---- measure ----

def name_of(case):
    return case["function"], case["key"]


def counts(scratch):
    """The cases, with the instructions and allocations of one call."""
    # A `rep stos` in the C library counts as one instruction per step, and whether it is used depends on the
    # C library and the processor, so it is switched off.
    output = common.run("valgrind", "--tool=callgrind", "--collect-atstart=no",
                        f"--callgrind-out-file={scratch / 'dump.%p'}", PROGRAM, common.PROVIDER, FLOORS, "--counts",
                        GLIBC_TUNABLES="glibc.cpu.x86_rep_stosb_threshold=1000000000:"
                                         "glibc.cpu.x86_rep_movsb_threshold=1000000000")

    def instructions(row):
        return common.counted(scratch / f"dump.{row['process']}") / int(row["calls"])

    harness, *rows = csv.DictReader(io.StringIO(output))
    cases = {}
    for row in rows:
        case = cases.setdefault(name_of(row), {"function": row["function"], "key": row["key"],
                                               "calls_per_page": int(row["calls_per_page"]),
                                               "steps": int(row["steps"]), "instructions": {}, "allocations": {}})
        case["instructions"][row["side"]] = counted = instructions(row) - instructions(harness)
        if counted <= 0:
            raise SystemExit(f"bench: {row['function']}({row['key']}): no instructions were counted")
        case["allocations"][row["side"]] = int(row["allocations"]) / int(row["calls"])
    return list(cases.values())


def measure(_short, scratch):
    common.run(PROGRAM, common.PROVIDER, FLOORS, "--check")
    return {"cases": counts(scratch)}


# ---- figures ----

def ratio(case):
    return case["instructions"]["provider"] / case["instructions"]["floor"]


def more(case, measured):
    return case[measured]["provider"] - case[measured]["floor"]


def by_function(figures):
    functions = {}
    for case in figures["cases"]:
        functions.setdefault(case["function"], []).append(case)
    return functions


def page(figures, measured, without=None):
    """The sums over the calls that draw a page."""
    return {side: sum(case["calls_per_page"] * case[measured][side] for case in figures["cases"]
                      if name_of(case) != without) for side in SIDES}


# ---- check ----

def expected():
    """The figures by case."""
    with EXPECTED.open(encoding="utf-8", newline="") as file:
        return {(row["function"], key): {name: float(row[name]) for name in FIGURES}
                for row in csv.DictReader(file) for key in row["keys"].split(BETWEEN_KEYS)}


def figures_of(case):
    return {**{f"{side}_{measured}": case[measured][side] for measured in ("instructions", "allocations")
               for side in SIDES}, "steps": case["steps"]}


def accept(scratch):
    """Writes the figures that are expected from now on."""
    common.run(PROGRAM, common.PROVIDER, FLOORS, "--check")
    rows = {}
    for case in sorted(counts(scratch), key=name_of):
        row = (case["function"], *(f"{figure:.10g}" for figure in figures_of(case).values()))
        rows.setdefault(row, []).append(case["key"])
    with EXPECTED.open("w", encoding="utf-8", newline="") as file:
        writer = csv.writer(file, lineterminator="\n")
        writer.writerow(["function", *FIGURES, "keys"])
        writer.writerows([*row, BETWEEN_KEYS.join(keys)] for row, keys in rows.items())


def differences(case, wanted):
    """The differences from what is expected, a line each."""
    measured = figures_of(case)
    floor, provider = measured["floor_instructions"], measured["provider_instructions"]
    expected_floor = wanted["floor_instructions"]
    if abs(floor - expected_floor) > FLOOR_TOLERANCE * expected_floor:
        yield f"the floor takes {floor:g} instructions, expected were {expected_floor:g}"
    expected_ratio = wanted["provider_instructions"] / expected_floor
    if provider - expected_ratio * floor > max(RATIO_TOLERANCE * expected_ratio * floor, LAYOUT_TOLERANCE):
        yield (f"{provider:g} instructions are {ratio(case):.3f} times the floor's, expected "
               f"were {wanted['provider_instructions']:g}, {expected_ratio:.3f} times")
    for name, what in (("provider_allocations", "allocations of the provider"),
                       ("floor_allocations", "allocations of the floor"),
                       ("steps", "platform calls, log lines, blocks handed out and results")):
        if measured[name] != wanted[name]:
            yield f"{measured[name]:g} {what}, expected were {wanted[name]:g}"


def check(figures):
    wanted = expected()
    measured = {name_of(case): case for case in figures["cases"]}
    wrong = [f"{function}({key}): is {'not measured' if (function, key) in wanted else 'not expected'}"
             for function, key in sorted(wanted.keys() ^ measured.keys())]
    for name in sorted(wanted.keys() & measured.keys()):
        wrong += [f"{name[0]}({name[1]}): {line}" for line in differences(measured[name], wanted[name])]
    if wrong:
        wrong.append(HOW_TO_ACCEPT)
    wrong += [f"{function}: {worst:.3f} times the floor's instructions are above the aim of {AIM:.2f}, and REASONS "
              f"in benchmark.py does not say why" for function, cases in by_function(figures).items()
              if (worst := max(map(ratio, cases))) > AIM and function not in REASONS]
    return wrong


# ---- report ----

def instructions_row(name, sums):
    share = sums["provider"] / sums["floor"]
    return [name, f"{sums['provider']:,.0f}", f"{sums['floor']:,.0f}", f"{share:.3f}", f"{AIM_OF_PAGE}",
            common.verdict(share, AIM_OF_PAGE)]


def page_table(figures):
    allocations = page(figures, "allocations")
    rows = [instructions_row("instructions", page(figures, "instructions")),
            instructions_row("without the call that parses JSON", page(figures, "instructions", without=PARSES)),
            ["allocations", f"{allocations['provider']:g}", f"{allocations['floor']:g}",
             f"{allocations['provider'] / allocations['floor']:.3f}", "1",
             common.verdict(allocations["provider"], allocations["floor"])]]
    return common.table(["a page's", "provider", "floor", "ratio", "aim", ""], rows)


def function_table(figures):
    rows = []
    for function, cases in by_function(figures).items():
        shares = [ratio(case) for case in cases]
        worst = max(shares)
        rows.append([f"`{function}`", len(cases), f"{common.median(shares):.2f}", f"{worst:.2f}",
                     common.verdict(worst, AIM), f"{max(more(case, 'allocations') for case in cases):+g}",
                     REASONS.get(function, "") if worst > AIM else ""])
    heads = ["function", "cases", "instructions, median", "worst case", f"aim {AIM:.2f}", "allocations", "why"]
    return common.table(heads, rows)


def plot_functions(figures, file):
    rows = sorted((common.median([ratio(case) for case in cases]), function)
                  for function, cases in by_function(figures).items())
    aim = f"set arrow from {AIM},-0.6 to {AIM},{len(rows) - 0.4} nohead dt 2"
    common.plot_bars(file, "Instructions of a call, in times of its floor's (median over the cases)", rows,
                     height=620, figures="%.2f", more=aim)


def search_sentence(figures):
    """The cost of finding the key, from the callback that does little else."""
    search = common.median([more(case, "instructions") for case in by_function(figures)["check_enable_int"]])
    calls = sum(case["calls_per_page"] for case in figures["cases"] if FINDS in REASONS.get(case["function"], ""))
    share = 100 * calls * search / page(figures, "instructions")["floor"]
    return (f"`check_enable_int` does little more than find its key, and takes {search:.0f} instructions more than\n"
            f"  its floor (median). {calls} calls of a page find a key; as much for each would be {share:.0f} % of\n"
            "  the floor's instructions.")


def report(figures, pictures):
    plot_functions(figures, pictures / "callbacks.svg")
    parsing = next(case for case in figures["cases"] if name_of(case) == PARSES)["instructions"]
    calls = sum(case["calls_per_page"] for case in figures["cases"])
    return f"""## The callbacks

Every function for every key, and for some in a second state, over a platform with almost no cost, compared with its
*floor*: straight-line C++, generated from a recording, that replays what it did once. It makes the same platform calls
with the same arguments, takes and releases the lock at the same places, logs the same lines, hands out and frees the
same blocks, and has jsoncpp read and write the same texts. It contains nothing else: no rule, no key and no state.
Before measuring, a recording of the floor is checked against the provider's, including every byte of a block. A page is
the {calls} calls of one drawing of the Network branch, as in the next section.

{page_table(figures)}
![Instructions compared with the floor's](performance/callbacks.svg)

{function_table(figures)}
- Instructions are counted by callgrind and do not depend on the machine's load. Each case is counted in a separate
  process, so that all start with the same heap, and is compared with its figure in `bench/callbacks/expected.csv`.
- The provider is measured as it is shipped, optimised for size (`-Os`), while the floor is optimised for speed (`-O2`);
  both are hardened in the same way.
- The floor measures and copies the platform's texts that it passes on, and compares the store's other texts with the
  recorded ones. Everything else that it writes is a constant: where the provider composes a text, its floor does not.
- Where the provider has jsoncpp read or write a text, so does the floor, but it ignores what was read. One call of the
  page reads a text at every drawing, `{PARSES[0]}` of `{PARSES[1]}`:
  {parsing['provider']:,.0f} instructions, and {parsing['floor']:,.0f} in the floor.
- {search_sentence(figures)}
"""
