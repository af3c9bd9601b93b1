"""Whatever bytes a text has: it is shown, never obeyed by the terminal, and JSON stays JSON."""

import json
import os
import pathlib
import re
import shutil
import subprocess

import pytest

SHARE = pathlib.Path(os.environ["VENTARO_SHARE"])

# A colour, the same in one character, what turns the writing direction, a line of its own, and no character.
ODD = b"a\x1b[31m\xc2\x9b31m\xe2\x80\xae\xe2\x80\xa8\nb\xff"
SHOWN = r"a\u001b[31m\u009b31m\u202e\u2028\u000ab" + "\ufffd"
SAME = ODD.decode(errors="replace")


def run(tv, *words, stdin=None, **env):
    return subprocess.run([*tv.program, *words], input=stdin, capture_output=True, check=False,
                          env={**tv.env, **env})


def is_harmless(text):
    """Whether the bytes are UTF-8 in which nothing but a line feed cannot be seen."""
    return not re.search("[\x00-\x09\x0b-\x1f\x7f-\x9f\u061c\u200e\u200f\u2028-\u202e\u2066-\u2069]",
                         text.decode())


# Each with what was odd in one place of the command line.
WRONG = {
    "a command": [ODD],
    "a command of a group": ["store", ODD],
    "an argument too many": ["show", ODD],
    "an option": ["show", b"--" + ODD],
    "a key": ["get", ODD],
    "a choice": ["set", "wifionoff", ODD],
    "an item without a list": ["list", ODD],
    "a number": ["connect", ODD],
    "an offered word": ["store", "set", "db/x", "1", "--type", ODD],
    "a key of the store": ["store", "get", ODD],
    "a key that the store has not": ["store", "get", b"db/" + ODD],
    "a new key": ["store", "set", b"db/" + ODD, "1"],
    "an int": ["store", "set", "db/x", ODD, "--type", "int"],
    "a scenario": ["network", "load", ODD],
    "a scenario's path": ["network", "load", b"/" + ODD],
    "a product": ["--product", ODD, "show"],
    "a menu file": ["--menu", ODD, "show"],
    "a provider": ["--provider", ODD, "show"],
    "a function": ["fault", "set", ODD, "1"],
    "a flag": ["feature", "set", ODD, "1"],
    "a name": ["name", ODD],
    "a callback": ["call", ODD, "x"],
    "a language": ["texts", "--language", ODD],
    "when to use colour": ["--color", ODD, "show"],
}


@pytest.mark.parametrize("words", WRONG.values(), ids=WRONG.keys())
def test_an_error_shows_in_one_line_what_was_typed(tv, words):
    done = run(tv, *words)
    assert done.returncode in (1, 2)
    assert done.stdout == b""
    message, *lists = done.stderr.decode().splitlines()
    assert is_harmless(done.stderr), done.stderr
    assert r"a\u001b[31m" in message or "control characters" in message
    assert all(line.startswith("  ") for line in lists)


@pytest.mark.parametrize("variable", ["VENTARO_PRODUCT", "VENTARO_SCENARIO", "VENTARO_REGION", "VENTARO_STATE_DIR",
                                      "VENTARO_RUNTIME_DIR", "LANGUAGE"])
def test_an_error_shows_in_one_line_what_the_environment_says(tv, variable):
    done = run(tv, "show", **{variable: b"/dev/null/" + ODD})
    assert r"a\u001b[31m" in done.stderr.decode()
    assert is_harmless(done.stderr), done.stderr


def test_an_error_of_the_shell_shows_what_was_typed(tv):
    done = run(tv, "shell", stdin=b"\x1b[31m\xe2\x80\xae\nget '\x1b[31m\xff'\n")
    assert is_harmless(done.stderr), done.stderr
    first, second = done.stderr.decode().splitlines()[:2]
    assert r'"\u001b[31m\u202e"' in first and '"\\u001b[31m\ufffd"' in second


def test_what_is_stored_is_shown_in_one_line(tv):
    tv.out("show")
    key = b"db/odd/" + ODD
    assert run(tv, "store", "set", key, ODD, "--type", "string").stdout.decode() == (
        f"db/odd/{SHOWN} = {SHOWN}\n")
    for words in (["get", key], ["list", "db/odd/"]):
        assert run(tv, "store", *words).stdout.decode() == f"db/odd/{SHOWN} = {SHOWN}\n"
    assert run(tv, "store", "unset", key).stdout.decode() == f"db/odd/{SHOWN} is not set\n"


def test_what_is_stored_is_json_in_json(tv):
    tv.out("show")
    run(tv, "store", "set", b"db/odd/" + ODD, ODD, "--type", "string")
    told = run(tv, "store", "list", "db/odd/", "--json").stdout
    assert is_harmless(told)
    assert json.loads(told) == [{"key": f"db/odd/{SAME}", "type": "string", "value": SAME}]


@pytest.fixture(name="odd_product")
def product_with_odd_texts(tv):
    """A resource folder whose only product has an odd name and an odd description."""
    root = tv.folder / "share"
    shutil.copytree(SHARE, root)
    for file in (root / "products").glob("*.json"):
        file.unlink()
    description = ODD.replace(b"\x1b", b"\\u001b").replace(b"\n", b"\\n")
    with open(os.path.join(bytes(root), b"products", ODD + b".json"), "wb") as file:
        file.write(b'{"description": "' + description + b'\\u0000c", "flags": {}}')
    return {"VENTARO_RESOURCE_ROOT": str(root)}


def test_products_are_shown_in_a_line_each(tv, odd_product):
    done = run(tv, "product", "list", **odd_product)
    assert done.stdout.decode() == SHOWN + ": " + SHOWN + r"\u0000c" + "\n"
    assert is_harmless(run(tv, "--product", "all", "show", "--brief", **odd_product).stdout)


def test_products_are_json_in_json(tv, odd_product):
    told = run(tv, "product", "list", "--json", **odd_product).stdout
    assert is_harmless(told)
    assert json.loads(told) == [{"name": SAME, "description": SAME + "\0c"}]


def test_a_saved_network_cannot_write_lines_of_the_menu(tv):
    tv.publish(("a\x1b[31m\u009b31m\u202e\nb", -50, "Connected"))
    before = len(tv.out("show", "--brief").splitlines())
    for words in (["show"], ["show", "--brief"], ["show", "--all", "--keys"], ["get", "savedap1"],
                  ["show", "--json"], ["--color", "always", "get", "savedap1", "--brief"]):
        assert is_harmless(run(tv, *words).stdout.replace(b"\x1b[1m", b"").replace(b"\x1b[0m", b""))
    tv.publish(("a", -50, "Connected"))
    assert len(tv.out("show", "--brief").splitlines()) == before


def test_what_a_callback_gave_is_shown_in_one_line(tv):
    tv.publish(("a\x1b\nb", -50, ""))
    assert r'value = "a\u001b\u000ab" (4 bytes)' in tv.out("call", "get_display_name", "menu/network/SavedAP1")


def test_completion_offers_nothing_that_cannot_be_shown(tv):
    tv.out("show")
    for key in (b"db/x/plain", b"db/x/p\xe2\x80\xae"):
        run(tv, "store", "set", key, "1", "--type", "int")
    shell = tv.at_terminal("shell")
    shell.reads_until("ventaro> ")
    shell.types("store get db/x/\t")
    assert "\u202e" not in shell.reads_until("plain")
    shell.types("\n")
    assert "db/x/plain = 1" in shell.reads_until("= 1")


def test_a_very_long_error_keeps_its_beginning_and_its_end(tv):
    message = tv.error(2, "frobnicate" + "x" * 60000)
    assert message.startswith('ventaro: there is no command "frobnicatexxx')
    assert message.endswith('(see "ventaro --help")\n')
    assert len(message) < 4200
