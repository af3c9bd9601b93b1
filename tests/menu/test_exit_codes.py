"""What cannot be printed is never 0, and a request to end ends every command at every moment."""

import json
import os
import shlex
import signal
import subprocess

import pytest

STUCK = os.environ["VENTARO_STUCK_PROVIDER"]
WIFI = "menu/network/WiFiOnOff"
CANNOT = "ventaro: cannot write to standard output\n"

# Of each command, words that print something.
PRINTING = [
    ["show"], ["show", "--json"], ["--product", "all", "show"], ["get", WIFI], ["watch"], ["watch", "--json"],
    ["list", WIFI], ["box", WIFI], ["choose", WIFI, "0", "--yes"], ["set", WIFI, "1"], ["connect", "2"],
    ["wait", WIFI, "On"], ["expect", WIFI, "On"], ["name", "Den"], ["call", "get_string", WIFI],
    ["texts", "--language", "ko", "--product", "tv"], ["store", "get", "db/menu_widget/language"],
    ["store", "list"], ["store", "list", "--json"], ["store", "set", "db/x", "1", "--type", "int"],
    ["store", "unset", "db/menu_widget/language"], ["network", "serve"], ["network", "load", "hotel"],
    ["product", "list"], ["fault", "list"], ["fault", "set", "wifi_get_enable_qx", "-9"], ["feature", "list"],
    ["feature", "set", "orlex_version", "1"], ["reset", "--yes"],
    ["--help"], ["store", "get", "--help"], ["--version"], ["--documentation"],
]
# What prints nothing of its own, or only later.
OTHERS = [["fault", "clear"], ["feature", "clear"], ["store", "watch", "db/x"], ["shell"]]


def run(tv, redirection, words):
    return subprocess.run(["sh", "-c", f"exec {shlex.join([*tv.program, *words])} {redirection}"], env=tv.env,
                          stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True,
                          timeout=120, check=False)


def test_these_are_all_commands(tv):
    lines = [" ".join(words) + " " for words in PRINTING + OTHERS]
    for command in json.loads(tv.out("--documentation"))["commands"]:
        assert any(line.startswith(command["words"] + " ") for line in lines), command["words"]


@pytest.mark.parametrize("words", PRINTING + OTHERS, ids=" ".join)
@pytest.mark.parametrize("redirection", [">&-", "1</dev/null"], ids=["closed", "read-only"])
def test_without_a_standard_output_no_command_does_anything(tv, redirection, words):
    done = run(tv, redirection, words)
    assert (done.returncode, done.stderr) == (1, CANNOT)
    assert not (tv.folder / "state").exists()


@pytest.mark.parametrize("words", PRINTING, ids=" ".join)
def test_a_full_standard_output_ends_every_command_with_a_failure(tv, words):
    done = run(tv, ">/dev/full", words)
    assert done.returncode == 1
    assert done.stderr.endswith(CANNOT)


def test_a_full_standard_output_ends_a_watch_of_the_store(tv):
    with open("/dev/full", "w", encoding="utf-8") as full, subprocess.Popen(
            [*tv.program, "store", "watch", "db/x"], stdout=full, stderr=subprocess.PIPE, text=True,
            env=tv.env) as watch:
        assert "watching" in watch.stderr.readline()
        tv.set("db/x", "1", "int")
        assert (watch.wait(120), watch.stderr.read()) == (1, CANNOT)


def test_a_full_standard_output_of_the_shell_is_a_failure(tv):
    with open("/dev/full", "w", encoding="utf-8") as full:
        done = subprocess.run([*tv.program, "shell"], input="list wifionoff\nwatch\n", stdout=full, timeout=120,
                              stderr=subprocess.PIPE, text=True, env=tv.env, check=False)
    assert (done.returncode, done.stderr) == (1, CANNOT)


@pytest.mark.parametrize("words, code", [
    (["store", "watch", "db/x"], 0),
    (["store", "watch", "db/x", "--count", "2"], 130),
])
def test_a_watch_of_the_store_that_was_to_count_is_not_done_when_it_is_interrupted(tv, words, code):
    watch = tv.start(*words)
    watch.error_line()
    tv.set("db/x", "1", "int")
    watch.line()
    assert watch.interrupt() == code


REQUESTS = [signal.SIGINT, signal.SIGTERM, signal.SIGHUP]


@pytest.mark.parametrize("request_to_end", REQUESTS[:2])
@pytest.mark.parametrize("words", [["show"], ["get", "clock"], ["watch"], ["connect", "1"], ["wait", "clock", "x"],
                                   ["expect", "clock", "x"], ["call", "get_display_name", "x"], ["shell"]],
                         ids=" ".join)
def test_a_request_to_end_ends_what_waits_for_a_provider_that_never_answers(tv, words, request_to_end):
    menu = tv.folder / "menu.json"
    menu.write_text(json.dumps({"items": [{"key": "clock", "kind": "saved-network"}]}))
    process = tv.start("--provider", STUCK, "--menu", str(menu), *words)
    if words == ["shell"]:
        process.type("get clock")
    assert process.error_line() == "never answers"
    process.popen.send_signal(request_to_end)
    code = process.popen.wait(120)
    # As a shell tells it, which the program is ended by or ends with.
    assert (code if code > 0 else 128 - code) == 128 + request_to_end


@pytest.mark.parametrize("request_to_end", REQUESTS)
def test_a_request_to_end_ends_a_wait_and_a_question(tv, request_to_end):
    shell = tv.start("shell")
    shell.type(f"get {WIFI} --brief")
    shell.line()
    shell.type(f"wait {WIFI} off")
    shell.popen.send_signal(request_to_end)
    assert shell.popen.wait(120) == 128 + request_to_end
    person = tv.at_terminal("choose", WIFI, "0")
    person.reads_until("\r\n? ")
    person.popen.send_signal(request_to_end)
    person.reads_to_the_end()
    assert person.leaves() == 128 + request_to_end
    assert tv.item(WIFI)["value"] == "On"
