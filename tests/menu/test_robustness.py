"""What may go wrong around the program, and what it then leaves behind."""

import json
import os
import resource
import shlex
import signal
import subprocess

import pytest

WIFI = "menu/network/WiFiOnOff"
SAVED_2 = "menu/network/SavedAP2"


@pytest.mark.parametrize("closed", ["<&- 2>&-", "<&- >&- 2>&-"])
def test_closed_standard_streams_do_not_become_the_stores_files(tv, closed):
    subprocess.run(["sh", "-c", f"{shlex.join(tv.program)} show {closed}"], env=tv.env, check=False,
                   stdout=subprocess.DEVNULL)
    assert tv.item(WIFI)["value"] == "On"


def test_files_that_may_not_grow_are_an_error_and_harm_nothing(tv):
    tv.out("show")
    limit = lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (4096, 4096))
    done = subprocess.run([*tv.program, "store", "set", "db/x", "1", "--type", "int"],
                          capture_output=True, text=True, env=tv.env, check=False,
                          preexec_fn=limit)
    assert done.returncode == 1
    assert "db/x" in done.stderr
    assert tv.item(WIFI)["value"] == "On"


@pytest.mark.skipif("VENTARO_SANITIZE" in os.environ, reason="a sanitizer needs descriptors itself")
def test_out_of_descriptors_it_fails_at_once_and_says_so(tv):
    tv.out("show")
    codes = []
    for files in range(4, 40):
        limit = lambda: resource.setrlimit(resource.RLIMIT_NOFILE, (files, files))
        done = subprocess.run([*tv.program, "connect", "2"], capture_output=True, text=True,
                              env=tv.env, check=False, preexec_fn=limit, timeout=60)
        codes.append(done.returncode)
        assert done.returncode == 0 or "oo many open files" in done.stderr, (files, done)
    assert sorted(codes, reverse=True) == codes
    assert set(codes) == {1, 0}


def test_one_folder_for_both_kinds_of_values_is_refused(tv):
    message = tv.error(1, "show", VENTARO_RUNTIME_DIR=tv.env["VENTARO_STATE_DIR"])
    assert "VENTARO_STATE_DIR and VENTARO_RUNTIME_DIR are both" in message


def test_what_a_provider_prints_does_not_get_into_the_output(tv):
    tv.set("memory/host/fault/connection_profile_enable_ethernet_eap", "-9", "int")
    done = tv.run("set", "menu/network/WiredEAP", "1", "--json")
    assert json.loads(done.stdout)["value"] == "On"
    assert done.stderr == "Failed to Enable EAP over Ethernet\n"


def test_bytes_that_are_no_text_are_told_as_json_all_the_same(tv):
    tv.out("show")
    subprocess.run([*tv.program, "store", "set", "db/x", b"a\xffb", "--type", "string"],
                   capture_output=True, env=tv.env, check=True)
    assert tv.stored("db/x") == "a\ufffdb"
    subprocess.run([*tv.program, "store", "set", b"db/\xff", "1", "--type", "int"],
                   capture_output=True, env=tv.env, check=True)
    assert "db/\ufffd" in [entry["key"] for entry in tv.json("store", "list", "db/")]


@pytest.mark.parametrize("request_to_end", [signal.SIGINT, signal.SIGTERM, signal.SIGHUP])
def test_a_connection_that_is_interrupted_does_not_stay_half_done(tv, request_to_end):
    scenario = json.loads(open(tv.env["VENTARO_SCENARIO"], encoding="utf-8").read())
    tv.use_scenario({**scenario, "connect_milliseconds": 60000})
    connect = tv.start("connect", "2")
    assert connect.line() == "Garden Shed   Connecting"
    connect.popen.send_signal(request_to_end)
    assert connect.popen.wait(60) == 128 + request_to_end
    assert tv.item(SAVED_2)["state"] == "connected"


def test_a_network_service_that_dies_is_taken_over(tv):
    scenario = json.loads(open(tv.env["VENTARO_SCENARIO"], encoding="utf-8").read())
    tv.use_scenario({**scenario, "connect_milliseconds": 2000})
    service = tv.start("network", "serve")
    service.line()
    connect = tv.start("connect", "2")
    assert connect.line() == "Garden Shed   Connecting"
    service.popen.kill()
    assert connect.line() == "Garden Shed   Connected"
    assert connect.popen.wait(60) == 0


def test_of_two_connections_at_once_the_later_one_holds(tv):
    service = tv.start("network", "serve")
    service.line()
    first, second = tv.start("connect", "2"), tv.start("connect", "1")
    codes = first.popen.wait(60), second.popen.wait(60)
    assert 0 in codes
    states = [tv.item(f"menu/network/SavedAP{n}")["state"] for n in (1, 2)]
    assert sorted(states) == ["connected", "none"]


def test_a_command_that_could_not_be_stored_is_told(tv):
    tv.out("show")
    tv.set("memory/host/fault/vconf_set_str", "-7", "int")
    for words in (["connect", "2"], ["connect", "2", "--no-wait"]):
        assert "could not be stored" in tv.error(1, *words)


def test_networks_drop_when_wifi_went_off_while_nobody_served(tv):
    tv.out("show")
    tv.set("memory/host/network/radio", "false", "bool")
    service = tv.start("network", "serve")
    service.line()
    assert tv.item("menu/network/SavedAP1")["state"] == "none"


@pytest.mark.parametrize("is_fresh", [True, False])
def test_a_scenario_of_the_environment_does_not_undo_one_that_was_loaded_later(tv, is_fresh):
    if not is_fresh:
        tv.out("show")
    tv.out("network", "load", "empty")
    assert tv.item("menu/network/SavedAP1")["enabled"] is False
    assert tv.item(WIFI)["value"] == "Off"


def test_no_translation_is_no_language(tv):
    assert tv.item(WIFI, LANGUAGE="C")["name"] == "Wi-Fi"


@pytest.mark.parametrize("moved", ["away", "elsewhere"])
def test_a_new_state_folder_has_the_saved_networks_of_the_scenario_that_runs(tv, moved):
    tv.out("show")
    if moved == "away":
        (tv.folder / "state").rename(tv.folder / "kept")
    else:
        tv.env["VENTARO_STATE_DIR"] = str(tv.folder / "new")
    assert [tv.item(f"menu/network/SavedAP{i}")["name"] for i in (1, 2)] == ["Attic 6E",
                                                                            "Garden Shed"]
