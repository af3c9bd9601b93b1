"""Wrong input: what was wrong, what there is, and an exit code."""

import json
import os
import pathlib
import re

import pytest

SHARE = pathlib.Path(os.environ["VENTARO_SHARE"])
COMMANDS = ("show, get, watch, list, box, choose, set, connect, wait, expect, name, call, texts, store, network, "
            "product, fault, feature, reset, shell")


def test_an_unknown_command_names_those_there_are(tv):
    assert tv.error(2, "frobnicate") == (
        f'ventaro: there is no command "frobnicate"; there are: {COMMANDS} (see "ventaro --help")\n')
    assert tv.error(2, "store", "put") == (
        'ventaro: there is no command "put"; there are: get, list, set, unset, watch '
        '(see "ventaro store --help")\n')


def test_a_misspelt_command_is_told_the_nearest_one(tv):
    assert tv.error(2, "shwo") == (
        'ventaro: there is no command "shwo"; did you mean "show"? (see "ventaro --help")\n')
    assert tv.error(2, "store", "lst") == (
        'ventaro: there is no command "lst"; did you mean "list"? (see "ventaro store --help")\n')


def test_a_missing_command_of_a_group_names_those_there_are(tv):
    assert tv.error(2, "network") == (
        'ventaro: a command is missing; there are: serve, load (see "ventaro network --help")\n')


@pytest.mark.parametrize("words, message", [
    (["get"], 'ventaro get: KEY is required (see "ventaro get --help")'),
    (["show", "more"], 'ventaro show: The following argument was not expected: more '
                       '(see "ventaro show --help")'),
    (["set", "wifionoff"], 'ventaro set: VALUE is required (see "ventaro set --help")'),
    (["store", "set", "db/x"], 'ventaro store set: VALUE is required '
                               '(see "ventaro store set --help")'),
    (["show", "--breif"], 'ventaro show: The following argument was not expected: --breif; '
                          'did you mean "--brief"? (see "ventaro show --help")'),
])
def test_a_mistake_in_the_arguments_is_one_line_that_says_where_help_is(tv, words, message):
    assert tv.error(2, *words) == message + "\n"


def test_help_is_no_error(tv):
    assert "Usage: ventaro" in tv.out("--help")
    assert "Usage: ventaro store get" in tv.out("store", "get", "--help")


def test_a_misspelt_option_without_a_command_is_told_of(tv):
    assert "--breif" in tv.error(2, "--breif")


def test_the_version_is_told(tv):
    assert re.fullmatch(r"ventaro \d+\.\d+\.\d+\n", tv.out("--version"))


@pytest.mark.parametrize("text, message", [
    ("{", "Missing '}' or object member name"),
    ("[]", "expected an object"),
    ('{"radio": "on"}', 'scenario.json:1: member "radio": expected true or false, found "on"'),
    ('{\n"radio": true,\n"connected": 5}',
     'scenario.json:3: member "connected": expected a string, found 5'),
    ('{"radio": true}', 'scenario.json:1: member "connected" is missing: expected a string'),
])
def test_a_wrong_scenario_names_file_line_member_and_what_was_expected(tv, text, message):
    tv.use_scenario(text)
    assert message in tv.error(1, "show")


def test_a_missing_scenario_is_named(tv):
    assert "/nowhere.json: cannot be read: No such file" in tv.error(
        1, "show", VENTARO_SCENARIO="/nowhere.json")
    assert 'there is no "hme" in' in tv.error(2, "show", VENTARO_SCENARIO="hme")


def test_a_wrong_product_names_file_line_member_and_what_was_expected(tv):
    product = json.loads((SHARE / "products/tv.json").read_text())
    product["flags"]["network.network_support"] = "yes"
    path = tv.folder / "product.json"
    path.write_text(json.dumps(product, indent=2))
    line = 1 + path.read_text()[:path.read_text().index('"yes"')].count("\n")
    assert (f'product.json:{line}: member "network.network_support": expected an integer, '
            'found "yes"') in tv.error(1, "show", VENTARO_PRODUCT=str(path))


def test_a_missing_product_names_those_there_are(tv):
    message = tv.error(2, "show", VENTARO_PRODUCT="toaster")
    assert 'there is no "toaster"' in message and "there are: " in message and "tv" in message


def test_a_network_that_there_is_not_is_named(tv):
    assert 'VENTARO_NETWORK is "carrier-pigeon"; there is: simulated' in tv.error(
        2, "show", VENTARO_NETWORK="carrier-pigeon")


def test_a_provider_that_cannot_be_loaded_is_named(tv):
    assert "cannot load the provider: /nowhere.so" in tv.error(1, "--provider", "/nowhere.so",
                                                               "show")
    assert "--provider wants" in tv.error(2, "--provider")


def test_a_library_that_is_no_provider_says_what_it_lacks(tv):
    assert "is no data provider: it has no create_provider" in tv.error(
        1, "show", VENTARO_PROVIDER="libc.so.6")


@pytest.mark.parametrize("words", [["show"], ["get", "menu/network/WiFiOnOff"], ["network", "serve"]])
@pytest.mark.parametrize("folder", ["state", "runtime"])
def test_a_damaged_store_is_named_as_store_list_does(tv, folder, words):
    tv.out("show")
    (tv.folder / folder / "data.mdb").write_bytes(b"no store" * 1024)
    message = tv.error(1, *words)
    assert message == tv.error(1, "store", "list")
    assert f"the store in {tv.folder}/{folder}: " in message and "is damaged" in message


def test_a_store_that_may_not_be_written_is_named_as_store_list_does(tv):
    tv.out("show")
    (tv.folder / "file").write_text("")
    elsewhere = {"VENTARO_STATE_DIR": str(tv.folder / "file/state")}
    assert tv.error(1, "show", **elsewhere) == tv.error(1, "store", "list", **elsewhere)


def test_a_state_folder_that_cannot_be_is_named(tv):
    (tv.folder / "file").write_text("")
    message = tv.error(1, "show", VENTARO_STATE_DIR=str(tv.folder / "file/state"))
    assert f"the store in {tv.folder}/file/state: " in message


@pytest.mark.parametrize("variable, value, there_are", [
    ("VENTARO_LOG", "loud", "there are: stderr"),
    ("VENTARO_REGION", "eu", "there are: us, other"),
])
def test_a_variable_with_a_value_that_there_is_not_says_which_there_are(tv, variable, value,
                                                                        there_are):
    for words in (["show"], ["store", "list"]):
        assert tv.error(2, *words, **{variable: value}) == (
            f'ventaro: {variable} is "{value}"; {there_are}\n')
    assert "Usage: ventaro" in tv.out("--help", **{variable: value})


def test_a_language_without_texts_is_told_of_and_the_menu_is_in_english(tv):
    done = tv.run("get", "menu/network/networkstatus", "--brief", LANGUAGE="tlh")
    assert done.returncode == 0 and "Network Status" in done.stdout
    assert done.stderr.startswith(
        'ventaro: LANGUAGE is "tlh", in which there are no texts; there are: ar, de, en, ')


@pytest.mark.parametrize("language", ["de", "de_AT", "de_DE.UTF-8", "de@euro", "tlh:de", "C", "en_GB"])
def test_a_language_with_texts_is_not_told_of(tv, language):
    tv.out("get", "menu/network/networkstatus", LANGUAGE=language)


def test_a_name_longer_than_a_provider_can_tell_is_refused_with_its_length(tv):
    assert tv.error(2, "name", "é" * 1024) == (
        "ventaro: the name has 2048 bytes; a name has at most 2047\n")
    tv.out("name", "é" * 1023 + "e")


def test_a_member_of_the_menu_file_that_there_is_not_is_told_the_nearest(tv):
    path = tv.folder / "menu.json"
    path.write_text('{"items": [\n{"key": "menu/x", "knid": "page", "kind": "action"}]}')
    assert 'menu.json:2: member "knid" means nothing here; did you mean "kind"?' in tv.error(
        1, "--menu", str(path), "show")
