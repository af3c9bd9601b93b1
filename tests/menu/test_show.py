"""What the menu shows."""

import json
import os
import pathlib

SHARE = pathlib.Path(os.environ["VENTARO_SHARE"])

MENU = """\
Network
  Network Status
  Network Settings
  Attic 6E                        Connected
  Garden Shed
  Wi-Fi                           On
  Power On with Mobile            Off
  Device Name                     Living Room TV
  Expert Settings
    Wi-Fi Direct                  On
    Easy Connection
    Wired 802.1X Connection       Off
    Install Certificate
    Network Certificate
    Network Certificate Manager
  Reset Network
"""

ICONS = ("/usr/apps/com.norvane.tv.theme-resource/shared/res/ug-SystemSetupNetworkUG-efl/res/"
         "systemsetup/")
WIFI = "menu/network/WiFiOnOff"
SAVED_1 = "menu/network/SavedAP1"
SAVED_2 = "menu/network/SavedAP2"


def items_of(menu):
    for item in menu:
        yield item
        yield from items_of(item.get("items", []))


def test_shows_translated_names_current_values_and_saved_networks(tv):
    assert tv.out("show", "--brief") == MENU


def test_shows_the_menu_when_no_command_is_given(tv):
    assert tv.out() == tv.out("show")
    assert tv.out("--brief") == tv.out("show", "--brief")


def test_shows_the_language_that_the_environment_names(tv):
    shown = tv.out("show", "--brief", LANGUAGE="ko")
    assert shown.startswith("네트워크\n  네트워크 상태\n")
    assert "켜기" in shown and "Attic 6E" in shown


def test_shows_the_tvs_own_language_when_the_environment_names_none(tv):
    tv.set("db/menu_widget/language", "de_DE", "string")
    assert tv.out("show", "--brief", LANGUAGE="").startswith("Netzwerk\n")


def test_shows_english_in_a_language_that_it_does_not_have(tv):
    assert tv.run("show", "--brief", LANGUAGE="tlh").stdout == MENU


def test_shows_names_in_any_locale_of_the_user(tv):
    assert tv.out("show", "--brief", LANGUAGE="ko", LC_ALL="C").startswith("네트워크\n")


def test_aligns_values_behind_wide_characters(tv):
    lines = tv.out("show", "--brief", LANGUAGE="ko").splitlines()
    wide = lambda text: sum(2 if "\uac00" <= c <= "\ud7a3" else 1 for c in text)
    ends = {wide(line[:line.rindex("   ") + 3]) for line in lines if "   " in line.strip()}
    assert len(ends) == 1


def test_json_tells_every_item_with_its_key_kind_and_value(tv):
    menu = tv.json("show")
    by_key = {item["key"]: item for item in items_of(menu)}
    assert by_key[WIFI] == {
        "key": WIFI, "kind": "choice", "name": "Wi-Fi", "value": "On", "position": 1,
        "visible": True, "enabled": True, "help": "Turn Wi-Fi on or off.",
        "titleIcon": ICONS + "icon_wifi/oobe_icon_n_wifi_4.png", "statusIcon": "",
        "list": [{"text": "Off", "value": 0, "then": "message-box"},
                 {"text": "On", "value": 1, "then": "message-box"}],
        "box": {"text": "Some features will not be available without Wi-Fi. "
                        "Do you want to continue?",
                "buttons": ["Yes", "No"], "type": 2}}
    assert by_key[SAVED_1]["state"] == "connected"
    assert by_key[SAVED_2]["state"] == "none"
    assert [child["key"] for child in by_key["menu/network/expertsettings"]["items"]] == [
        "menu/network/expertsettings/wifidirect", "menu/network/expertsettings/easyconnect",
        "menu/network/WiredEAP", "menu/network/InstallCertificate",
        "menu/network/CertificateList", "menu/network/CertificateManager"]


def test_shows_the_document_that_is_in_the_store(tv):
    tv.out("show", "--brief")
    tv.publish(("Boat", -40, "Connecting"), ("Barn", -90, "Connected"))
    shown = tv.out("show", "--brief")
    assert "  Boat                            Connecting\n" in shown
    assert "  Barn                            Connected\n" in shown


def test_marks_saved_networks_that_there_are_not_as_disabled(tv):
    tv.publish()
    assert tv.item(SAVED_1)["enabled"] is False
    assert "(no saved network)" in tv.out("show", "--brief")
    assert "(disabled)" in tv.out("show", "--brief")


def test_shows_one_region_of_an_item_with_regional_variants(tv):
    keys = {item["key"] for item in items_of(tv.json("show", VENTARO_REGION="other"))}
    assert "menu/network/MobileDeviceTV_NOT_US" in keys
    assert "menu/network/MobileDeviceTV_US" not in keys


def test_an_unknown_region_is_an_error_that_names_those_there_are(tv):
    assert 'VENTARO_REGION is "moon"; there are: us, other' in tv.error(
        2, "show", VENTARO_REGION="moon")


def test_a_wrong_document_costs_the_items_that_need_it_and_names_the_callback(tv):
    tv.set("db/menu/network/TopSavedAP", '{"values": [{}]}', "string")
    done = tv.run("show", "--brief")
    assert done.returncode == 1
    assert "Wi-Fi                           On" in done.stdout
    assert (f"ventaro: {SAVED_1}: get_display_name raised an exception: "
            "Value is not convertible to Int.") in done.stderr


def test_control_characters_of_a_network_name_do_not_reach_the_terminal(tv):
    tv.publish(("\x1b[31mred\u0007", -50, ""))
    assert tv.item(SAVED_1)["name"] == "\x1b[31mred\u0007"
    for words in (["show"], ["show", "--all"], ["get", SAVED_1], ["connect", "1", "--no-wait"]):
        assert r"\u001b[31mred\u0007" in tv.out(*words)


def test_a_name_cut_inside_a_character_ends_in_a_replacement_character(tv):
    tv.publish(("x" * 2046 + "é", -50, ""))
    assert tv.item(SAVED_1)["name"] == "x" * 2046 + "\ufffd"


def test_quotes_and_right_to_left_text_of_a_network_name_are_shown_as_they_are(tv):
    for name in ('"quoted" \\ name', "مقهى الزاوية", "😀 guests"):
        tv.publish((name, -50, ""))
        assert tv.item(SAVED_1)["name"] == name


def test_a_setting_that_cannot_be_read_has_no_value(tv):
    tv.set("memory/host/fault/wifi_get_enable_qx", "-9", "int")
    item = tv.item(WIFI)
    assert "value" not in item and "position" not in item


def test_get_shows_one_item(tv):
    assert tv.out("get", WIFI, "--brief") == "Wi-Fi   On\n"


def test_get_of_an_unknown_key_names_the_keys_there_are(tv):
    message = tv.error(2, "get", "menu/sound/volume")
    assert message.startswith('ventaro: the menu has no item "menu/sound/volume"; it has:\n')
    assert f"\n  {WIFI}\n" in message


def test_a_key_may_be_given_by_its_last_parts_in_any_letter_case(tv):
    for typed in ("wifionoff", "WIFIONOFF", "network/WiFiOnOff", "MENU/network/wifionoff"):
        assert tv.out("get", typed, "--brief") == "Wi-Fi   On\n"
    assert tv.item("network")["key"] == "menu/general/network"


def test_an_ending_that_is_not_a_whole_part_is_no_key_but_is_suggested(tv):
    assert tv.error(2, "get", "onoff") == (
        f'ventaro: the menu has no item "onoff"; did you mean "{WIFI}"?\n')


def test_a_key_that_is_nearly_right_is_told_the_nearest_ones(tv):
    for typed, nearest in (("wifionof", f'"{WIFI}"'), ("devcie-name", '"menu/network/devicename"'),
                           ("savedap", f'"{SAVED_1}" or "{SAVED_2}"')):
        assert tv.error(2, "get", typed) == (
            f'ventaro: the menu has no item "{typed}"; did you mean {nearest}?\n')


def test_an_ending_of_several_keys_is_an_error_that_lists_them(tv):
    root = tv.folder / "share"
    root.mkdir()
    for name in ("products", "scenarios", "res"):
        (root / name).symlink_to(SHARE / name)
    keys = ["menu/a/again", "menu/b/again"]
    (root / "menu.json").write_text(
        json.dumps({"items": [{"key": key, "kind": "action"} for key in keys]}))
    message = tv.error(2, "get", "again", VENTARO_RESOURCE_ROOT=str(root))
    assert message == ('ventaro: several items end in "again":\n  menu/a/again\n  menu/b/again\n')
    assert tv.json("get", "A/again", VENTARO_RESOURCE_ROOT=str(root))["key"] == keys[0]
