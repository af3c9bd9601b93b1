"""One function of the provider, called by itself."""

import os
import pathlib
import re

import pytest

WIFI = "menu/network/WiFiOnOff"
SAVED_1 = "menu/network/SavedAP1"
STATES = "SAVEDAP1_NAME_KEY"
HEADER = pathlib.Path(__file__).parents[2] / "include/ventaro/data_provider.h"


def called(tv, *words):
    """The result and the outputs of a call."""
    told = tv.json("call", *words)
    return told["result"], told["outputs"]


def text(value):
    return {"text": value, "bytes": len(value.encode())}


def test_every_callback_and_every_check_of_the_header_can_be_called(tv):
    header = HEADER.read_text()
    table = header[header.index("typedef struct data_provider_cbs"):]
    callbacks = re.findall(r"\(\*(\w+)\)\(", table)
    checks = re.findall(r"VENTARO_EXPORT bool (check_\w+)\(", header)
    assert (len(callbacks), len(checks)) == (17, 8)
    listed = tv.error(2, "call", "frobnicate", "x").splitlines()
    assert [line.strip() for line in listed[1:]] == callbacks + checks


def test_shows_the_result_and_the_outputs(tv):
    assert tv.out("call", "get_int", WIFI) == "result = 1\nvalue = 1\n"
    assert tv.out("call", "get_display_name", WIFI) == 'result = 0\nvalue = "Wi-Fi" (5 bytes)\n'
    assert tv.json("call", "get_display_name", WIFI) == {
        "function": "get_display_name", "key": WIFI, "result": 0, "outputs": {"value": text("Wi-Fi")}}


def test_an_output_that_was_left_alone_is_untouched(tv):
    assert tv.out("call", "get_module_info", "x") == "result = 0\nvalue = untouched\n"
    assert called(tv, "get_list_item_int_value", STATES, "null") == (
        0, {"value": {"untouched": True}})
    tv.set("memory/host/fault/wifi_get_enable_qx", "-9", "int")
    assert called(tv, "get_string", WIFI) == (1, {"value": {"untouched": True}})


def test_any_key_is_given_to_the_provider_as_it_is(tv):
    assert called(tv, "get_display_name", "wifionoff") == (0, {"value": text("")})
    assert called(tv, "get_string", "") == (1, {"value": text("Living Room TV")})
    assert called(tv, "get_module_info", "provider/owner")[0] == 0


def test_texts_have_their_length_in_bytes_also_when_they_were_cut(tv):
    tv.publish(("x" * 2046 + "é", -50, ""))
    result, outputs = called(tv, "get_display_name", SAVED_1)
    assert (result, outputs["value"]["bytes"]) == (0, 2047)
    assert outputs["value"]["text"] == "x" * 2046 + "\ufffd"


def test_lists_are_called_entry_by_entry(tv):
    assert called(tv, "get_list_items", STATES) == ({"pointer": True}, {"count": 3})
    assert called(tv, "get_list_item_display_value", STATES, "1") == (0, {"value": text("loading")})
    assert called(tv, "get_list_item_int_value", STATES, "1") == (0, {"value": 1})
    assert called(tv, "get_list_item_following_action_type", WIFI, "0") == (0, {"type": 2})
    assert called(tv, "get_list_item_following_action_type", WIFI, "null") == (
        0, {"type": {"untouched": True}})
    assert called(tv, "free_list_items", STATES) == (0, {})
    assert tv.error(2, "call", "get_list_item_int_value", STATES, "3") == (
        f'ventaro: the list of "{STATES}" has no entry 3; it has 3, counted from 0\n')


def test_what_is_handed_out_can_be_given_back(tv):
    assert called(tv, "release_string", WIFI) == (0, {})
    assert called(tv, "release_string", WIFI, "null") == (1, {})


def test_the_callers_buffers_are_shown(tv):
    assert called(tv, "get_current_value_sid", "x") == (0, {"value": text("Living Room TV")})
    result, outputs = called(tv, "get_messagebox_info", "x")
    assert (result, outputs["first"], outputs["second"], outputs["type"]) == (
        0, text("Yes"), text("No"), 2)
    assert outputs["text"]["bytes"] == 75


def test_sets_and_shows_what_the_provider_reported(tv):
    assert called(tv, "set_string", "x", "Den TV") == (0, {})
    assert tv.item("devicename")["value"] == "Den TV"
    assert called(tv, "set_int", "menu/network/WiredEAP", "-1") == (-1, {})
    assert called(tv, "set_int", WIFI, "0") == (1, {})
    assert tv.item(WIFI)["value"] == "Off"


@pytest.mark.parametrize("kind, value", [
    ("int", "7"), ("string", "a"), ("double", "0.5"), ("bool", "true")])
def test_checks_are_called_with_a_value_of_their_kind_or_without_one(tv, kind, value):
    for check in ("check_visibility", "check_enable"):
        assert called(tv, f"{check}_{kind}", WIFI, value) == (True, {})
        assert called(tv, f"{check}_{kind}", WIFI) == (True, {})
    tv.publish()
    assert called(tv, "check_enable_int", SAVED_1) == (False, {})


@pytest.mark.parametrize("words, message", [
    (["get_in", "x"], 'there is no callback "get_in"; did you mean "get_int"?'),
    (["set_int", "x"], "set_int needs a VALUE"),
    (["get_int", "x", "1"], "get_int takes no VALUE"),
    (["set_int", "x", "1x"], '"1x" is no number that set_int takes'),
    (["check_enable_bool", "x", "yes"],
     '"yes" is neither true nor false, which check_enable_bool takes'),
    (["release_string", "x", "y"], 'release_string takes back the name of KEY, or "null"'),
])
def test_a_wrong_call_is_told(tv, words, message):
    assert tv.error(2, "call", *words) == f"ventaro: {message}\n"


def test_an_exception_that_leaves_a_callback_is_told(tv):
    tv.set("db/menu/network/TopSavedAP", '{"values": [{}]}', "string")
    assert "get_display_name raised an exception: " in tv.error(
        1, "call", "get_display_name", SAVED_1)


def test_a_provider_may_leave_out_callbacks_and_checks(tv):
    names_only = ["--provider", os.environ["VENTARO_NAMES_ONLY_PROVIDER"]]
    assert called(tv, *names_only, "get_display_name", "clock") == (0, {"value": text("A Clock")})
    assert tv.error(1, "call", "get_int", "clock", *names_only) == (
        "ventaro: the provider does not offer what get_int needs\n")
    assert tv.error(1, "call", "check_enable_bool", "clock", *names_only) == (
        "ventaro: the provider does not export check_enable_bool\n")
