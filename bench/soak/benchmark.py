"""The memory of a process that makes millions of random callbacks over the host platform, which must be flat."""

import tempfile
from pathlib import Path

import common

DOCUMENT = common.SOURCE / "docs" / "reliability.md"

PROGRAM = common.PROGRAMS / "soak"
CALLBACKS, FEW = 10_000_000, 200_000
WARM_UP = 4  # of 20 rows; from this one on, the memory must be flat
HEAP_SLACK = 64 * 1024  # bytes
RESIDENT_SLACK = 1024 * 1024
SHOWN = (1, 4, 9, 14, 19)


def measure(short, scratch):
    # In memory if possible, because this does not measure the disk.
    memory = Path("/dev/shm")
    with tempfile.TemporaryDirectory(dir=memory if memory.is_dir() else scratch) as store:
        return {"series": common.run_json(PROGRAM, common.PROVIDER, FEW if short else CALLBACKS,
                                          **common.folders(Path(store)))}


def check(figures):
    start, *later = figures["series"][WARM_UP:]
    for row in later:
        if row["heap"] >= start["heap"] + HEAP_SLACK:
            yield f"the heap in use grew from {start['heap']:,} to {row['heap']:,} bytes after {row['callbacks']:,} calls"
        if row["resident"] >= start["resident"] + RESIDENT_SLACK + row["kept"] - start["kept"]:
            yield f"the resident memory grew to {row['resident']:,} bytes after {row['callbacks']:,} calls"


def report(figures, _pictures):
    rows = [[f"{row['callbacks']:,}", *(f"{row[name] // 1024:,}" for name in ("resident", "heap", "kept"))]
            for row in (figures["series"][index] for index in SHOWN)]
    return common.table(["callbacks", "resident memory, KiB", "heap in use without the texts never freed, KiB",
                         "texts never freed, KiB"], rows)
