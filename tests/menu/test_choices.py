"""What a choice does."""

import json
import os
import pathlib
import shutil
import subprocess

SHARE = pathlib.Path(os.environ["VENTARO_SHARE"])

WIFI = "menu/network/WiFiOnOff"
WIRED = "menu/network/WiredEAP"
MOBILE = "menu/network/MobileDeviceTV_US"
DIRECT = "menu/network/expertsettings/wifidirect"
NAME = "menu/network/devicename"
REFRESH = "db/menu/refresh_menu"


def test_wifi_that_is_switched_off_shows_as_off(tv):
    assert tv.out("set", WIFI, "0") == "Wi-Fi   Off\n"
    shown = tv.out("show", "--brief")
    assert "  Wi-Fi                           Off\n" in shown
    assert "Connected" not in shown
    assert tv.stored("memory/menu/network/wifionui_enabled") == 0


def test_wait_goes_on_until_the_refresh_request_and_other_processes_see_it_too(tv):
    watch = tv.watch(REFRESH)
    assert tv.out("set", WIFI, "0", "--wait") == "Wi-Fi   Off\nThe menu is asked to refresh.\n"
    watch.line_until(f"{REFRESH} = 1")


def test_an_entry_is_chosen_by_its_text_as_well(tv):
    assert tv.out("set", WIFI, "Off") == "Wi-Fi   Off\n"


def test_keys_and_entries_are_found_in_any_letter_case(tv):
    assert tv.out("set", "wifionoff", "OFF") == "Wi-Fi   Off\n"
    assert tv.out("choose", "wiredeap", "on") == "Wired 802.1X Connection   On\n"
    assert tv.out("set", "devicename", "living room tv") == "Device Name   Living Room TV\n"


def test_a_misspelt_entry_is_told_the_nearest_one(tv):
    assert tv.error(2, "set", WIFI, "Of") == (
        f'ventaro: "{WIFI}" has no choice "Of"; it has 0 (Off), 1 (On); did you mean "Off"?\n')


def test_the_tv_reconnects_when_wifi_comes_back_on(tv):
    tv.out("set", WIFI, "0")
    tv.out("set", WIFI, "1")
    assert tv.item("menu/network/SavedAP1")["state"] == "connected"


def test_wired_authentication_reaches_the_ethernet_profile_and_the_store(tv):
    assert tv.out("set", WIRED, "1") == "Wired 802.1X Connection   On\n"
    assert tv.stored("memory/host/network/eap/eth0") is True
    assert tv.stored("db/menu/network/wiredeap") == 1


def test_power_on_with_mobile_lasts(tv):
    assert tv.out("set", MOBILE, "1") == "Power On with Mobile   On\n"
    shutil.rmtree(tv.env["VENTARO_RUNTIME_DIR"])
    assert tv.item(MOBILE)["value"] == "On"


def test_wifi_direct_shows_as_on_only_on_a_6_ghz_network(tv):
    assert tv.item(DIRECT)["value"] == "On"
    tv.out("connect", "2")
    assert tv.out("set", DIRECT, "1") == "Wi-Fi Direct   Off\n"
    assert tv.stored("db/menu/network/wifidirect") == 1


def test_a_typed_name_is_stored_and_shown(tv):
    assert tv.out("name", "Küche") == "Device Name   Küche\n"
    assert tv.item(NAME)["position"] == 1


def test_the_default_name_is_chosen_from_the_list(tv):
    tv.out("name", "Küche")
    assert tv.out("set", NAME, "Living Room TV") == "Device Name   Living Room TV\n"


def test_the_entry_for_a_typed_name_asks_to_type_it(tv):
    assert "use: name TEXT" in tv.error(2, "set", NAME, "1")


def test_a_name_must_have_characters_that_can_be_shown(tv):
    assert "the name is empty" in tv.error(2, "name", "")
    assert "without control characters" in tv.error(2, "name", "a\x1bb")


def test_the_name_cannot_change_while_the_screen_is_split(tv):
    tv.set("memory/multiscreen/state",
           '{"end": {"style": "PAP_FN"}, "status": "PostCondition"}', "string")
    assert "disabled" in tv.error(1, "name", "Kitchen")
    assert tv.item(NAME)["value"] == "Living Room TV"


def test_a_value_that_is_no_entry_is_an_error_that_lists_the_entries(tv):
    assert (f'"{WIFI}" has no choice "7"; it has 0 (Off), 1 (On)') in tv.error(2, "set", WIFI, "7")


def test_an_item_without_a_value_is_an_error_that_lists_those_with_one(tv):
    message = tv.error(2, "set", "menu/network/networkstatus", "1")
    assert "has no value to set; these have one:" in message and WIFI in message


def test_a_radio_that_refuses_is_reported(tv):
    tv.set("memory/host/fault/wifi_set_enable_qx", "-9", "int")
    assert "set_int gave -1" in tv.error(1, "set", WIFI, "0")


def test_a_store_that_refuses_is_reported_and_the_old_name_stays(tv):
    tv.out("show")
    tv.set("memory/host/fault/vconf_set_str", "-7", "int")
    assert "set_string gave -7" in tv.error(1, "name", "Kitchen")
    assert tv.stored("db/menu/network/devicename/tv_name") == "Living Room TV"


def test_an_entry_text_that_fills_its_block_is_read_to_its_end_and_no_further(tv):
    root = tv.folder / "share"
    for name in ("products", "scenarios", "menu.json"):
        (root / name).parent.mkdir(exist_ok=True)
        (root / name).symlink_to(SHARE / name)
    catalogue = root / "res/locale/tlh/LC_MESSAGES"
    catalogue.mkdir(parents=True)
    source = tv.folder / "long.po"
    source.write_text('msgid ""\nmsgstr "Content-Type: text/plain; charset=UTF-8\\n"\n\n'
                      f'msgid "SID_ON"\nmsgstr "{"o" * 300}"\n')
    subprocess.run(["msgfmt", "-o", catalogue / "ventaro.mo", source], check=True)
    message = tv.error(2, "set", WIFI, "7", LANGUAGE="tlh", VENTARO_RESOURCE_ROOT=str(root))
    assert f"1 ({'o' * 256})\n" in message
