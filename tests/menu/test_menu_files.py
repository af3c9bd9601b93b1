"""The menu of any provider: its own menu file, and what its table does not offer."""

import json
import os

import pytest

NAMES_ONLY = os.environ["VENTARO_NAMES_ONLY_PROVIDER"]
LISTS_ONLY = os.environ["VENTARO_LISTS_ONLY_PROVIDER"]

CLOCK = {"items": [{"key": "clock", "kind": "page", "items": [
    {"key": "clock/automatic", "kind": "choice"},
    {"key": "clock/name", "kind": "device-name"},
    {"key": "clock/network", "kind": "saved-network"},
    {"key": "clock/help", "kind": "action"},
]}]}


def menu_file(tv, menu):
    path = tv.folder / "own-menu.json"
    path.write_text(menu if isinstance(menu, str) else json.dumps(menu, indent=2))
    return str(path)


def of_another(tv, *words, provider=NAMES_ONLY, menu=None):
    return "--provider", provider, "--menu", menu_file(tv, menu or CLOCK), *words


def test_a_provider_that_offers_only_names_has_a_menu_of_names(tv):
    page = tv.json(*of_another(tv, "show"))[0]
    for item in (page, *page["items"]):
        assert (item["name"], item["help"], item["titleIcon"]) == ("A Clock", "", "")
        assert not {"value", "position", "list", "box", "problems"} & item.keys()
    assert [item["key"] for item in page["items"]] == [
        "clock/automatic", "clock/name", "clock/network", "clock/help"]


def test_without_that_callback_a_list_is_empty(tv):
    assert tv.out(*of_another(tv, "list", "clock/automatic")) == ""


@pytest.mark.parametrize("words, callback, provider", [
    (["set", "clock/automatic", "1"], "set_int", LISTS_ONLY),
    (["connect", "1"], "set_int", NAMES_ONLY),
    (["name", "Den"], "set_string", NAMES_ONLY),
    (["box", "clock/automatic"], "get_messagebox_info", NAMES_ONLY),
])
def test_a_command_that_needs_what_is_not_offered_says_so(tv, words, callback, provider):
    assert tv.error(1, *of_another(tv, *words, provider=provider)) == (
        f"ventaro: the provider does not offer {callback}\n")


def test_entries_without_values_have_their_positions_and_no_action(tv):
    assert tv.json(*of_another(tv, "list", "clock/automatic", provider=LISTS_ONLY)) == [
        {"text": "A Clock", "value": 0, "then": "none"},
        {"text": "SID_ON", "value": 1, "then": "none"}]


def test_string_ids_are_looked_up_in_the_text_domain_of_the_menu_file(tv):
    wired = lambda menu: tv.json("--menu", menu_file(tv, menu), "list", "menu/network/devicename")
    items = [{"key": "menu/network/devicename", "kind": "device-name"}]
    assert wired({"items": items})[1]["text"] == "SID_USER_INPUT"
    assert wired({"text_domain": "ventaro", "items": items})[1]["text"] == "User Input"


def test_the_menu_file_says_which_item_is_the_name_and_which_are_the_saved_networks(tv):
    menu = {"items": [
        {"key": "menu/network/SavedAP2", "kind": "saved-network"},
        {"key": "menu/network/devicename/selectdevicename", "kind": "device-name"}]}
    words = ("--menu", menu_file(tv, menu))
    assert tv.out(*words, "connect", "1") == "Garden Shed   Connecting\nGarden Shed   Connected\n"
    assert "there is no saved network 2; there are 1\n" in tv.error(2, *words, "connect", "2")
    assert tv.json(*words, "name", "Den")["key"] == "menu/network/devicename/selectdevicename"


def test_a_menu_without_a_name_or_networks_says_so(tv):
    words = ("--menu", menu_file(tv, {"items": []}))
    assert tv.json(*words, "show") == []
    assert 'no item of kind "device-name"' in tv.error(2, *words, "name", "Den")
    assert 'no item of kind "saved-network"' in tv.error(2, *words, "connect", "1")


def test_the_environment_names_a_menu_file_as_well(tv):
    assert tv.out("show", VENTARO_MENU=menu_file(tv, {"items": []})) == ""


@pytest.mark.parametrize("menu, message", [
    ({}, 'own-menu.json:1: member "items" is missing: expected an array'),
    ({"text_domain": 1, "items": []}, 'member "text_domain": expected a string, found 1'),
    ('{"items": [\n{"key": "clock", "kind": "clock"}]}', 'own-menu.json:2: member "kind": expected'),
    ('{"items": [\n{"key": "clock", "kind": "action", "region": "eu"}]}',
     'own-menu.json:2: member "region": expected "us" or "other", found "eu"'),
    ('{"items": [\n{"key": "", "kind": "action"}]}', 'own-menu.json:2: member "key": expected a menu key'),
    ('{"items": [{"key": "a", "kind": "page", "items": [\n{"key": "a", "kind": "action"}]}]}',
     'own-menu.json:2: the key "a" stands here twice'),
    ('{"items": [{"key": "a", "kind": "choice",\n"items": []}]}',
     'own-menu.json:2: only a page has "items"'),
    ('{"items": [{"key": "a", "kind": "action",\n"states": "b"}]}',
     'own-menu.json:2: only a saved-network has "states"'),
])
def test_a_wrong_menu_file_names_file_line_member_and_what_was_expected(tv, menu, message):
    assert message in tv.error(1, "--menu", menu_file(tv, menu), "show")


def test_a_menu_file_that_there_is_not_is_named(tv):
    assert "/nowhere.json: cannot be read: No such file" in tv.error(
        1, "--menu", "/nowhere.json", "show")
    assert "--menu wants the path of a menu file" in tv.error(2, "--menu")
