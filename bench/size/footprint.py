#!/usr/bin/env python3
"""Measures what bench/size/run built, and writes the figures into a document between its lines
"<!-- measured -->" and "<!-- end of measured -->". All else in the document stays.

    footprint.py docs/footprint.md build/size/x86_64 build/size/armhf build/size/i386
"""

import collections
import datetime
import itertools
import json
import mmap
import os
import pathlib
import platform
import re
import statistics
import subprocess
import sys

RUNS = 21
SYMBOLS = 15
SMALL_SECTION = 512
FILE_AIM = 96
MEMORY_AIM = 64
TV = "armhf"
START, END = "<!-- measured -->\n", "<!-- end of measured -->\n"

PAGE = mmap.PAGESIZE // 1024
MAPPING = re.compile(r"[0-9a-f]+-[0-9a-f]+ \S+ \S+ \S+ \S+ *(.*)")
STRING = "std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >"


def output(*words, **settings):
    return subprocess.run(words, capture_output=True, text=True, check=True, **settings).stdout


def private_pages(smaps, provider):
    """KiB of private pages, by where they are (own, heap, rest) and kind (Dirty, Clean)."""
    pages = collections.Counter()
    place = None
    for line in smaps.splitlines():
        if mapping := MAPPING.fullmatch(line):
            name = mapping[1].strip()
            place = "own" if name == str(provider) else "heap" if name == "[heap]" else "rest"
        elif line.startswith("Private_"):
            kind, amount = line.removeprefix("Private_").split(":")
            pages[place, kind] += int(amount.removesuffix(" kB"))
    return pages


class Target:
    """A target's library as shipped and stripped, and what loading it costs a process."""

    def __init__(self, folder):
        self.folder = pathlib.Path(folder).resolve()
        self.name = self.folder.name
        self.tools = json.loads((self.folder / "probe/target.json").read_text())
        self.emulated = "qemu" in " ".join(self.tools["emulator"][:1])
        self.built = self.folder / "provider/lib/libventaro.so"
        self.library = self.folder / "libventaro.so"
        output(self.tools["strip"], self.built, "-o", self.library)
        self.flush()
        self.compiler = output(self.tools["compiler"], "--version").splitlines()[0]
        words = output(self.tools["size"], self.library).splitlines()[1].split()
        self.text, self.data, self.bss = map(int, words[:3])
        self.file = self.library.stat().st_size
        runs = [self.load() for _ in range(RUNS)]
        self.memory = {key: sorted(run[key] for run in runs) for key in runs[0]}
        self.clean_when_shared = self.load_beside_another()["own", "Clean"]

    def flush(self):
        """Writes the file to disk: pages that still wait for that would count as dirty ones."""
        with open(self.library, "rb+") as file:
            os.fsync(file)

    def load(self):
        """What loading adds in a fresh process: KiB of pages, and "blocks" in bytes of heap."""
        text = output(*self.tools["emulator"], self.folder / "probe/probe",
                      self.folder / "probe/libstand_in.so", self.library,
                      env={**os.environ, "LD_BIND_NOW": "1"})
        heap, rest = text.split("\nbefore\n")
        before, after = (private_pages(part, self.library) for part in rest.split("\nafter\n"))
        added = {key: after[key] - before[key]
                 for key in itertools.product(("own", "heap", "rest"), ("Dirty", "Clean"))}
        old, new = map(int, heap.split())
        added["blocks"] = new - old
        if self.emulated:
            # All other mappings are the emulator's. The program's heap is known by its blocks.
            added["rest", "Dirty"] = 0
            added["heap", "Dirty"] = -(-added["blocks"] // mmap.PAGESIZE) * PAGE
        added["dirty"] = sum(added[place, "Dirty"] for place in ("own", "heap", "rest"))
        added["dirty and own"] = added["dirty"] + added["own", "Clean"]
        return added

    def load_beside_another(self):
        """As load(), while another process has the whole file mapped: this one."""
        with open(self.library, "rb") as file, \
                mmap.mmap(file.fileno(), 0, prot=mmap.PROT_READ) as mapped:
            sum(mapped[::mmap.PAGESIZE])
            return self.load()

    def median(self, key):
        return round(statistics.median(self.memory[key]))

    def spread(self, key):
        values = self.memory[key]
        spread = f" ({values[0]} to {values[-1]})" if values[0] != values[-1] else ""
        return f"{self.median(key)}{spread}"

    def sections(self):
        """Bytes by name, of what is loaded."""
        lines = output(self.tools["size"], "-A", self.library).splitlines()
        rows = [line.split() for line in lines if line.startswith(".")]
        return {name: int(size) for name, size, address in rows if address != "0"}

    def symbols(self):
        """Bytes by name; a function's clones and overloads, and its exceptional path, together."""
        sizes = collections.Counter()
        seen = set()
        for line in output(self.tools["nm"], "-C", "-S", "--size-sort", self.built).splitlines():
            address, size, _, name = line.split(" ", 3)
            if address in seen:
                continue
            seen.add(address)
            name = name.replace(STRING, "std::string").replace("(anonymous namespace)::", "")
            sizes[name.replace("[abi:cxx11]", "").split("(")[0]] += int(size, 16)
        return sizes


def table(head, rows):
    lines = [head, ["---"] + ["---:"] * (len(head) - 1), *rows]
    return "".join("| " + " | ".join(map(str, line)) + " |\n" for line in lines)


def verdict(holds):
    return "holds" if holds else "**does not hold**"


def cpu():
    lines = pathlib.Path("/proc/cpuinfo").read_text(encoding="utf-8").splitlines()
    names = [line.split(":")[1].strip() for line in lines if line.startswith("model name")]
    return names[0] if names else platform.machine()


def report(targets):
    """The measured part of the document, as text."""
    names = [target.name for target in targets]
    tv = next(target for target in targets if target.name == TV)
    system = platform.freedesktop_os_release()["PRETTY_NAME"]
    text = f"""
Measured on {datetime.date.today()}. `bench/size/run` repeats it and writes these tables anew.

- machine: {cpu()}, {platform.machine()}, pages of {PAGE} KiB, {system}, Linux {platform.release().split("-")[0]}
"""
    text += "".join(f"- compiler for {target.name}: `{target.compiler}`\n" for target in targets)

    text += "\n### The aims\n\n"
    rows = [[f"{TV}: the file is at most {FILE_AIM} KiB", f"{tv.file / 1024:.1f} KiB",
             verdict(tv.file <= FILE_AIM * 1024)]]
    for target in targets:
        for key, kind in (("dirty", "Private_Dirty"),
                          ("dirty and own", "Private_Dirty and its own Private_Clean")):
            rows.append([f"{target.name}: at most {MEMORY_AIM} KiB of private memory, as {kind}",
                         f"{target.median(key)} KiB",
                         verdict(target.median(key) <= MEMORY_AIM)])
    text += table(["aim", "is", ""], rows)

    text += "\n### The file, stripped, in bytes\n\n"
    text += table(["", *names], [[label, *(f"{getattr(target, field):,}" for target in targets)]
                                 for label, field in (("text", "text"), ("data", "data"),
                                                      ("bss", "bss"), ("file", "file"))])

    text += "\n### Memory that loading adds, in KiB\n\n"
    text += f"Each is the median (least to most) of {RUNS} processes.\n\n"

    def row(label, key, known_when_emulated=True):
        return [label, *("not known" if target.emulated and not known_when_emulated
                         else target.spread(key) for target in targets)]

    text += table(["", *names], [
        row("Private_Dirty: the library's own mappings", ("own", "Dirty")),
        row("Private_Dirty: the heap", ("heap", "Dirty")),
        row("Private_Dirty: elsewhere", ("rest", "Dirty"), False),
        row("**Private_Dirty**", "dirty"),
        row("Private_Clean: the library's own mappings", ("own", "Clean")),
        ["the same, while another process maps the file",
         *(target.clean_when_shared for target in targets)],
        row("**Private_Dirty and its own Private_Clean**", "dirty and own"),
        row("Private_Clean: elsewhere", ("rest", "Clean"), False),
        row("heap blocks in use, in bytes", "blocks"),
    ])

    text += f"\n### The biggest symbols, in bytes\n\nBy their size on {TV}; "
    text += "a function's overloads, clones and exceptional paths together.\n\n"
    symbols = {target.name: target.symbols() for target in targets}
    text += table(["", *names], [[f"`{name}`", *(f"{symbols[n][name]:,}" for n in names)]
                                 for name, _ in symbols[TV].most_common(SYMBOLS)])

    text += f"\n### The sections of at least {SMALL_SECTION} bytes\n\n"
    sections = {target.name: target.sections() for target in targets}
    shown = dict.fromkeys(name for n in names for name in sections[n])
    text += table(["", *names], [[f"`{name}`", *(f"{sections[n].get(name, 0):,}" for n in names)]
                                 for name in shown
                                 if max(sections[n].get(name, 0) for n in names) >= SMALL_SECTION])
    return text + "\n"


def main(document, *folders):
    path = pathlib.Path(document)
    old = path.read_text(encoding="utf-8")
    if old.count(START) != 1 or old.count(END) != 1:
        sys.exit(f"{document} needs one line {START.strip()} and, after it, one line {END.strip()}")
    head, rest = old.split(START)
    tail = rest.split(END)[1]
    measured = report([Target(folder) for folder in folders])
    path.write_text(head + START + measured + END + tail, encoding="utf-8")
    print(f"{document} is written.")


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    main(*sys.argv[1:])
