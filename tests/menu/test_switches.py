"""Faults and feature flags, switched by name."""

import pytest

WIFI = "menu/network/WiFiOnOff"
DEVICE = "product.device_sid"


def test_a_fault_lasts_until_it_is_cleared(tv):
    assert tv.out("fault", "set", "wifi_set_enable_qx", "-9") == "wifi_set_enable_qx = -9\n"
    assert "set_int gave" in tv.error(1, "set", WIFI, "0")
    assert "wifi_set_enable_qx = -9\n" in tv.out("fault", "list")
    tv.out("fault", "clear", "wifi_set_enable_qx")
    assert "wifi_set_enable_qx = 0\n" in tv.out("fault", "list")
    tv.out("set", WIFI, "0")


def test_all_faults_are_cleared_at_once(tv):
    for function in ("wifi_set_enable_qx", "vconf_get_bool"):
        tv.out("fault", "set", function, "-1")
    tv.out("fault", "clear")
    assert {entry["value"] for entry in tv.json("fault", "list")} == {0}


@pytest.mark.parametrize("words", [["set", "wifi_set_enabled_qx", "-1"],
                                   ["clear", "wifi_set_enabled_qx"]])
def test_a_function_that_there_is_not_is_told_the_nearest(tv, words):
    assert tv.error(2, "fault", *words) == (
        'ventaro: there is no platform function "wifi_set_enabled_qx"; '
        'did you mean "wifi_set_enable_qx"?\n')
    assert tv.json("store", "list", "memory/host/fault/") == []


def test_0_is_no_fault(tv):
    assert '"ventaro fault clear wifi_initialize"' in tv.error(2, "fault", "set",
                                                               "wifi_initialize", "0")


def test_a_feature_flag_is_overridden_until_it_is_cleared(tv):
    help_text = lambda: tv.item("menu/network/expertsettings/easyconnect")["help"]
    before = help_text()
    assert tv.out("feature", "set", DEVICE, "REP.DEVICE.PROJECTOR") == (
        f"{DEVICE} = REP.DEVICE.PROJECTOR\n")
    assert "of the projector" in help_text()
    assert f"{DEVICE} = REP.DEVICE.PROJECTOR\n" in tv.out("feature", "list")
    tv.out("feature", "clear", DEVICE)
    assert help_text() == before


def test_feature_list_shows_the_products_flags(tv):
    assert "orlex_version = 0\n" in tv.out("feature", "list")
    assert "orlex_version = 2\n" in tv.out("--product", "modular-display-2", "feature", "list")


def test_a_flag_that_there_is_not_is_told_the_nearest(tv):
    for words in (["set", "orlex_verison", "1"], ["clear", "orlex_verison"]):
        assert tv.error(2, "feature", *words) == (
            'ventaro: there is no feature flag "orlex_verison"; did you mean "orlex_version"?\n')


def test_a_flags_value_must_be_of_its_type(tv):
    assert '"two" is no int' in tv.error(2, "feature", "set", "orlex_version", "two")
