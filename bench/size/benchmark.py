"""The provider's file and the memory of a process that loads it, on this machine and on the 32-bit targets."""

import collections
import itertools
import json
import mmap
import os
import platform
import re

import common

DOCUMENT = common.SOURCE / "docs" / "footprint.md"

OWN = platform.machine()
TV = "armhf"
TARGETS = (OWN, TV, "i386")
RUNS = 21
SYMBOLS = 15
SMALL_SECTION = 512  # bytes
FILE_AIM = 96  # KiB, for the TV's file
MEMORY_AIM = 64

PAGE = mmap.PAGESIZE // 1024
MAPPING = re.compile(r"[0-9a-f]+-[0-9a-f]+ \S+ \S+ \S+ \S+ *(.*)")
STRING = "std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >"
PLACES, KINDS = ("own", "heap", "rest"), ("Dirty", "Clean")

# The rows of the memory that loading adds, and those that cannot be known under emulation.
MEMORY = {
    "Private_Dirty: the library's own mappings": "own Dirty",
    "Private_Dirty: the heap": "heap Dirty",
    "Private_Dirty: elsewhere": "rest Dirty",
    "**Private_Dirty**": "dirty",
    "Private_Clean: the library's own mappings": "own Clean",
    "the same, while another process maps the file": "clean when shared",
    "**Private_Dirty and its own Private_Clean**": "dirty and own",
    "Private_Clean: elsewhere": "rest Clean",
    "heap blocks in use, in bytes": "blocks",
}
NOT_KNOWN = ("rest Dirty", "rest Clean")


# ---- measure ----

def build(target):
    """The build trees of the provider as shipped and of the program that loads it."""
    folder = common.BUILD / "size" / target
    toolchain = []
    if target != OWN:
        common.run(common.SOURCE / "scripts" / "install-dependencies", target)
        common.run(common.SOURCE / "scripts" / "sysroot", target)
        toolchain = ["--toolchain", common.SOURCE / "cmake" / "toolchains" / f"{target}.cmake"]
        common.run("cmake", "-S", common.SOURCE, "--preset", "release", "-B", folder / "provider", *toolchain)
        common.run("cmake", "--build", folder / "provider", "--target", "ventaro_provider")
    common.run("cmake", "-S", common.SOURCE / "bench" / "size", "-B", folder / "load", "-G", "Ninja", *toolchain)
    common.run("cmake", "--build", folder / "load")
    return common.SHIPPED if target == OWN else folder / "provider", folder / "load"


def private_pages(smaps, provider):
    """KiB of private pages, by place and kind."""
    pages = collections.Counter()
    place = None
    for line in smaps.splitlines():
        if mapping := MAPPING.fullmatch(line):
            name = mapping[1].strip()
            place = "own" if name == str(provider) else "heap" if name == "[heap]" else "rest"
        elif line.startswith("Private_"):
            kind, amount = line.removeprefix("Private_").split(":")
            pages[f"{place} {kind}"] += int(amount.removesuffix(" kB"))
    return pages


def load(tools, tree, library):
    """What loading adds in a fresh process: KiB of pages, and "blocks" in bytes of heap."""
    text = common.run(*tools["emulator"], tree / "bin" / "load", tree / "lib" / "libknows_nothing.so", library,
                      LD_BIND_NOW=1)
    steps, maps = text.split("\nbefore\n")
    before, after = (private_pages(part, library) for part in maps.split("\nafter\n"))
    added = {name: after[name] - before[name] for name in map(" ".join, itertools.product(PLACES, KINDS))}
    old, new = json.loads(steps)["heap"]
    added["blocks"] = new - old
    if is_emulated(tools):
        # All other mappings belong to the emulator. The program's heap is measured by its blocks.
        added["rest Dirty"] = 0
        added["heap Dirty"] = -(-added["blocks"] // mmap.PAGESIZE) * PAGE
    added["dirty"] = sum(added[f"{place} Dirty"] for place in PLACES)
    added["dirty and own"] = added["dirty"] + added["own Clean"]
    return added


def load_beside_another(tools, tree, library):
    """The provider's own clean pages while another process, this one, maps the whole file."""
    with open(library, "rb") as file, mmap.mmap(file.fileno(), 0, prot=mmap.PROT_READ) as mapped:
        sum(mapped[::mmap.PAGESIZE])
        return load(tools, tree, library)["own Clean"]


def is_emulated(tools):
    return "qemu" in " ".join(tools["emulator"][:1])


def sections(tools, library):
    """Bytes of the loaded sections, by name."""
    rows = [line.split() for line in common.run(tools["size"], "-A", library).splitlines() if line.startswith(".")]
    return {name: int(size) for name, size, address in rows if address != "0"}


def symbols(tools, library):
    """Bytes by name; a function's clones and overloads, and its exceptional path, together."""
    sizes, seen = collections.Counter(), set()
    for line in common.run(tools["nm"], "-C", "-S", "--size-sort", library).splitlines():
        address, size, _, name = line.split(" ", 3)
        if address not in seen:
            seen.add(address)
            name = name.replace(STRING, "std::string").replace("(anonymous namespace)::", "")
            sizes[name.replace("[abi:cxx11]", "").split("(")[0]] += int(size, 16)
    return sizes


def measure_target(target, runs):
    provider, tree = build(target)
    built, library = provider / "lib" / "libventaro.so", tree / "libventaro.so"
    tools = json.loads((tree / "target.json").read_text(encoding="utf-8"))
    common.run(tools["strip"], built, "-o", library)
    common.write_back(library)
    text, data, bss = map(int, common.run(tools["size"], library).splitlines()[1].split()[:3])
    memory = [load(tools, tree, library) for _ in range(runs)]
    return {"compiler": common.run(tools["compiler"], "--version").splitlines()[0], "emulated": is_emulated(tools),
            "file": {"text": text, "data": data, "bss": bss, "file": library.stat().st_size},
            "memory": {**{name: sorted(run[name] for run in memory) for name in memory[0]},
                       "clean when shared": [load_beside_another(tools, tree, library)]},
            "sections": sections(tools, library), "symbols": symbols(tools, built)}


def measure(short, scratch):
    """The short run measures only this machine, which needs no other compiler."""
    targets = (OWN,) if short else TARGETS
    return {"page": PAGE, "system": platform.freedesktop_os_release()["PRETTY_NAME"],
            "targets": {target: measure_target(target, 3 if short else RUNS) for target in targets}}


# ---- check and report ----

def aims(figures):
    """Each aim with the measured KiB and the limit."""
    for name, target in figures["targets"].items():
        if name == TV or TV not in figures["targets"]:
            yield f"{name}: the file is at most {FILE_AIM} KiB", target["file"]["file"] / 1024, FILE_AIM
    for name, target in figures["targets"].items():
        for row, kind in (("dirty", "Private_Dirty"), ("dirty and own", "Private_Dirty and its own Private_Clean")):
            yield (f"{name}: at most {MEMORY_AIM} KiB of private memory, as {kind}",
                   common.median(target["memory"][row]), MEMORY_AIM)


def check(figures):
    """Clean pages are only reported, because the kernel decides about them."""
    return [f"{aim}, it is {value:.1f}" for aim, value, most in aims(figures)
            if value > most and "Private_Clean" not in aim]


def spread(values):
    around = f" ({values[0]} to {values[-1]})" if values[0] != values[-1] else ""
    return f"{common.median(values):.0f}{around}"


def memory_cell(target, name):
    return "not known" if target["emulated"] and name in NOT_KNOWN else spread(target["memory"][name])


def report(figures, _pictures):
    targets = figures["targets"]
    all_sections = dict.fromkeys(name for target in targets.values() for name in target["sections"])
    biggest = collections.Counter(targets.get(TV, targets[OWN])["symbols"]).most_common(SYMBOLS)

    def table(rows):
        return common.table(["", *targets], rows)

    def row(label, cell):
        return [label, *(cell(target) for target in targets.values())]

    compilers = "\n".join(f"- compiler for {name}: `{target['compiler']}`" for name, target in targets.items())
    aim_rows = [[aim, f"{value:.1f} KiB", common.verdict(value, most)] for aim, value, most in aims(figures)]
    files = [row(name, lambda target, name=name: f"{target['file'][name]:,}")
             for name in ("text", "data", "bss", "file")]
    memory = [row(label, lambda target, name=name: memory_cell(target, name)) for label, name in MEMORY.items()]
    functions = [row(f"`{name}`", lambda target, name=name: f"{target['symbols'].get(name, 0):,}") for name, _ in biggest]
    parts = [row(f"`{name}`", lambda target, name=name: f"{target['sections'].get(name, 0):,}") for name in all_sections
             if max(target["sections"].get(name, 0) for target in targets.values()) >= SMALL_SECTION]
    return f"""- pages of {figures["page"]} KiB, {figures["system"]}
{compilers}

### The aims

{common.table(["aim", "is", ""], aim_rows)}
### The file, stripped, in bytes

{table(files)}
### Memory that loading adds, in KiB

Each is the median (least to most) of {RUNS} processes.

{table(memory)}
### The biggest symbols, in bytes

Sorted by their size on {TV}; a function's overloads, clones and exception paths count together.

{table(functions)}
### The sections of at least {SMALL_SECTION} bytes

{table(parts)}"""
