"""What the program asks of the kernel, call by call, and what becomes of it when a call goes wrong: a
signal or an error at a chosen call. Of the program's first thread, which is the one that writes."""

import collections
import re
import subprocess

from television import GUARD_SECONDS, PROGRAM

CALL = re.compile(r"(?P<name>\w+)\((?P<arguments>.*)\) += (?P<result>-?\d+|\?|0x[0-9a-f]+)")
STRING = re.compile(r'"((?:\\x[0-9a-f]{2})*)"')

Call = collections.namedtuple("Call", "name arguments result")


def run(tv, words, *options, **how):
    """Runs the program to its end under strace with these options."""
    return subprocess.run(["strace", "--quiet=all", "-o", str(tv.folder / "trace"), *options, *PROGRAM, *words],
                          text=True, env=tv.env, timeout=GUARD_SECONDS, check=False,
                          **({"stderr": subprocess.PIPE, "stdout": subprocess.PIPE} | how))


def calls_of(tv, words, *options, **how):
    """The calls of a run of the program, in order."""
    done = run(tv, words, *options, **how)
    assert done.returncode == 0, done.stderr
    found = (CALL.match(line) for line in (tv.folder / "trace").read_text().splitlines())
    return [Call(**call.groupdict()) for call in found if call]


def strings(arguments):
    """The strings among a call's arguments, where they were recorded whole, as bytes."""
    return [bytes.fromhex(text.replace("\\x", "")) for text in STRING.findall(arguments)]


# Records all strings whole.
WHOLE = ("-xx", "-s", str(1 << 24))
