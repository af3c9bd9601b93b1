"""wait and expect: making sure of what the menu shows."""

import pytest

WIFI = "menu/network/WiFiOnOff"


@pytest.mark.parametrize("value", ["On", "on", "1"])
def test_what_is_expected_and_shown_is_no_error(tv, value):
    assert tv.out("expect", "wifionoff", value) == "Wi-Fi   On\n"
    assert tv.out("wait", "wifionoff", value) == "Wi-Fi   On\n"
    assert tv.json("expect", WIFI, value) == tv.item(WIFI)


def test_another_value_is_an_error_that_names_both(tv):
    assert tv.error(4, "expect", "wifionoff", "off") == (
        f'ventaro: {WIFI}: expected "off", but it shows "On"\n')


def test_a_value_that_does_not_come_in_time_is_an_error_that_names_both(tv):
    assert tv.error(4, "wait", WIFI, "Off", "--within", "1") == (
        f'ventaro: {WIFI}: expected "Off", but it shows "On" after 1 second\n')


@pytest.mark.parametrize("command", ["wait", "expect"])
def test_a_value_that_the_item_can_never_show_is_told_at_once(tv, command):
    assert 'did you mean "Off"' in tv.error(2, command, WIFI, "Offf")
    assert "has no value" in tv.error(2, command, "menu/general/network", "1")
    assert "the menu has no item" in tv.error(2, command, "nothing", "1")


def test_names_and_states_can_be_expected_that_are_in_no_list(tv):
    assert tv.out("expect", "savedap1", "connected") == "Attic 6E   Connected\n"
    assert tv.out("expect", "savedap2", "") == "Garden Shed\n"
    tv.out("name", "Den TV")
    assert tv.out("expect", "devicename", "Den TV") == "Device Name   Den TV\n"
    assert '"Den TV"' in tv.error(4, "expect", "devicename", "Attic TV")


def test_wait_ends_when_another_process_makes_the_item_show_the_value(tv):
    wait = tv.start("wait", WIFI, "Off")
    tv.out("set", WIFI, "0")
    assert wait.line() == "Wi-Fi   Off"
    assert wait.popen.wait() == 0


def test_a_script_waits_for_the_end_of_a_connection(tv):
    done = tv.run("shell", stdin="connect 2 --no-wait\nwait savedap2 connected\nexpect savedap2 connected\n")
    assert done.returncode == 0, done.stderr


def test_ctrl_c_ends_a_wait(tv):
    shell = tv.start("shell")
    shell.type(f"get {WIFI} --brief")
    assert shell.line() == "Wi-Fi   On"
    shell.type(f"wait {WIFI} Off")
    assert shell.interrupt() == 130
