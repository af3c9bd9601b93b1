"""How the costs grow: with the number of saved networks in the document, and with the threads that
call at once."""

import math
import os

import common

# What one more network may cost at 10,000, relative to 1,000; 1 if the cost is linear.
AIM_GROWTH = 1.25
MOST_EXPONENT = 1.1  # the exponent with which the instructions grow

ENTRIES = common.PROGRAMS / "entries"
THREADS = common.PROGRAMS / "threads"
SIZES = {1: 100, 10: 100, 100: 50, 1000: 20, 10000: 10}  # networks: calls of each callback
CALLS = ("name", "title icon", "second icon", "enable")
ANSWERS = {"name": "Network 0", "title icon": "oobe_icon_n_wifi_4.svg", "second icon": "r_icon_xs_check.png",
           "enable": "1"}
DRAWING = (1, 2, 3, 4, 5, 6, 7, 8)
COUNTED = (100, 1000, 10000)  # networks


# ---- measure ----

def entries(size, calls, variables):
    return common.run_json(ENTRIES, common.PROVIDER, size, calls, **variables)


def all_sizes(short, scratch):
    """The figures of each size, with the times of all rounds; each round takes all sizes in turn."""
    variables = common.folders(scratch, "entries")
    sizes = {}
    for _ in range(1 if short else 3):
        for size, calls in SIZES.items():
            run = entries(size, 2 if short else calls, variables)
            so_far = sizes.setdefault(str(size), run)
            if so_far is not run:
                for name, times in run["times"].items():
                    so_far["times"][name] += times
    return sizes


def instructions(scratch):
    """The instructions of one call of each callback, summed, by number of networks."""
    file = scratch / "callgrind"
    counts = {}
    for size in COUNTED:
        common.run("valgrind", "--quiet", "--tool=callgrind", "--instr-atstart=no", f"--callgrind-out-file={file}",
                   ENTRIES, common.PROVIDER, size, 1, **common.folders(scratch, "instructions"))
        counts[str(size)] = common.counted(file)
    return counts


def throughput(short, scratch):
    """Callbacks a second by number of threads, of each round."""
    variables = common.folders(scratch, "threads")
    rates = {}
    for _ in range(1 if short else 5):
        for count in (1, 8) if short else DRAWING:
            run = common.run_json(THREADS, common.PROVIDER, count, 100 if short else 400, **variables)
            rates.setdefault(str(count), []).append(run["callbacks"] / run["nanoseconds"] * 1e9)
    return rates


def measure(short, scratch):
    return {"sizes": all_sizes(short, scratch), "instructions": instructions(scratch),
            "throughput": throughput(short, scratch), "processors": os.cpu_count()}


def wrong_answers(figures):
    for size, run in figures["sizes"].items():
        for name, expected in ANSWERS.items():
            if not run["answers"][name].endswith(expected):
                yield f"{size} networks, {name}: {run['answers'][name]!r}, not {expected!r}"


def wrong_memory(figures):
    """The memory held does not vary, except for the ends of long names."""
    held = {size: figures["sizes"][str(size)]["held"] for size in SIZES}
    for fewer, more in ((100, 1000), (1000, 10000)):
        if held[more] > 10.5 * held[fewer]:
            yield f"{more} networks hold {held[more]} bytes, {fewer} hold {held[fewer]}"


def exponent(few, many, of):
    """The exponent with which a cost grows from few networks to many."""
    return math.log(of(many) / of(few), many / few)


def instruction_exponents(figures):
    """The exponents by the two numbers of networks."""
    counts = figures["instructions"]
    return {(few, many): exponent(few, many, lambda size: counts[str(size)]) for few, many in zip(COUNTED, COUNTED[1:])}


def wrong_growth(figures):
    for (few, many), power in instruction_exponents(figures).items():
        if power > MOST_EXPONENT:
            yield (f"the instructions grow with the power of {power:.2f} from {few} to {many} networks, "
                   f"the limit is {MOST_EXPONENT}")


def check(figures):
    return [*wrong_answers(figures), *wrong_memory(figures), *wrong_growth(figures)]


# ---- report ----

def time_of(figures, name, size):
    return common.median(figures["sizes"][str(size)]["times"][name])


def for_one_more(figures, name, fewer, more):
    return (time_of(figures, name, more) - time_of(figures, name, fewer)) / (more - fewer)


def cost_rows(figures):
    for name in CALLS:
        growth = for_one_more(figures, name, 1000, 10000) / for_one_more(figures, name, 100, 1000)
        power = exponent(100, 10000, lambda size, name=name: time_of(figures, name, size))
        yield [name, f"{growth:.2f}", common.verdict(growth, AIM_GROWTH), f"{power:.2f}",
               *(common.duration(time_of(figures, name, size)) for size in SIZES)]
    yield ["change notification", "", "", "",
           *(common.duration(time_of(figures, "notification", size)) for size in SIZES)]


def memory_rows(figures):
    def row(name, value):
        return [name, *(value(size, figures["sizes"][str(size)]) for size in SIZES)]
    yield row("the document", lambda size, run: f"{run['bytes']:,}")
    yield row("held by the provider", lambda size, run: f"{run['held']:,}")
    yield row("held, by network", lambda size, run: f"{run['held'] / size:.0f}")
    yield row("resident at most while it is read", lambda size, run: f"{run['peak']:,}")


def throughput_rows(figures):
    rates = figures["throughput"]
    for count, values in rates.items():
        ratio = common.ratios(values, rates["1"])
        yield [count, "1" if count == "1" else common.with_spread(ratio),
               f"{common.median(values):,.0f} ± {100 * common.spread(values):.0f} %"]


def draw_costs(figures, file):
    series = [[[size, time_of(figures, name, size) / 1000] for size in SIZES] for name in (*CALLS, "notification")]
    colours = ("#4477aa", "#228833", "#66ccee", "#ccbb44", "#aa3377")
    lines = ", ".join(f'$data{index} using 1:2 with linespoints lw 2 pt {index + 4} lc rgb "{colour}" title "{name}"'
                      for index, (name, colour) in enumerate(zip((*CALLS, "change notification"), colours)))
    per_entry = for_one_more(figures, "name", 1000, 10000) / 1000
    common.plot(file, f"""
set title "A saved network's callbacks, by the networks in the document"
set logscale xy
set xlabel "networks"
set ylabel "µs a call"
set xrange [0.8:12500]
plot {lines}, [10:10000] {per_entry} * x with lines lc rgb "#999999" dt 2 title "a straight line"
""", series)


def draw_throughput(figures, file):
    rows = [[int(count), common.median(values) / 1000, min(values) / 1000, max(values) / 1000]
            for count, values in figures["throughput"].items()]
    common.plot(file, """
set title "Threads that draw the branch at once, under the one lock"
set xlabel "threads"
set ylabel "thousand callbacks a second"
set yrange [0:*]
set xrange [0.5:8.5]
set xtics 1
plot $data0 using 1:2:3:4 with yerrorlines lw 2 pt 7 lc rgb "#4477aa" title "all threads together, median and range"
""", [rows])


def from_to(values, show):
    low, high = show(min(values)), show(max(values))
    return low if low == high else f"{low} to {high}"


def one_more(figures):
    return from_to([for_one_more(figures, name, 1000, 10000) for name in CALLS], common.duration)


def powers(figures):
    return from_to(instruction_exponents(figures).values(), "{:.2f}".format)


def of_one_thread(figures):
    rates = figures["throughput"]
    most = max(rates, key=int)
    return (f"{most} threads together make\n"
            f"  {common.with_spread(common.ratios(rates[most], rates['1']))} times the callbacks of one.")


def of_one_network(figures):
    ratio = time_of(figures, "notification", 10000) / time_of(figures, "notification", 1)
    return f"With 10,000 networks it takes {ratio:.2f} times as long as with one."


def report(figures, pictures):
    draw_costs(figures, pictures / "scale-networks.svg")
    draw_throughput(figures, pictures / "scale-threads.svg")
    sizes = [f"{size:,}" for size in SIZES]
    costs = common.table(["networks", "growth", f"aim: {AIM_GROWTH}", "exponent", *sizes], cost_rows(figures))
    memory = common.table(["bytes", *sizes], memory_rows(figures))
    rates = common.table(["threads", "against one", "callbacks a second"], throughput_rows(figures))
    return f"""## Scale

The items of the saved networks, with documents of 1 to 10,000 networks. "Growth" is the time that one more network costs
between 1,000 and 10,000, relative to between 100 and 1,000; "exponent" is the power with which the cost grows from 100
to 10,000. Linear growth has 1 for both.

{costs}
![A saved network's callbacks, by the networks in the document](performance/scale-networks.svg)

{memory}
- Each of these callbacks reads the whole document and logs each network. One more network costs each of them
  {one_more(figures)} between 1,000 and 10,000.
- The instructions of the four together, counted by callgrind, grow with a power of {powers(figures)} from 100 to
  10,000 networks; `bench/run` fails above {MOST_EXPONENT}.
- A notification leads to a durable set, the request to refresh.
  {of_one_network(figures)}

One to eight threads draw the branch at once:

{rates}
![Threads that draw the branch at once](performance/scale-threads.svg)

- All but two of the callbacks in a drawing take the one lock. {of_one_thread(figures)}
- There were {figures["processors"]} processors for up to {max(DRAWING)} threads.
"""
