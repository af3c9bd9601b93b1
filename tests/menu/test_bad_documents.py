"""Documents that other components leave in the store, and that are not as they should be: they cost
what depends on them, and nothing else."""

import json
import os
import shlex
import subprocess

import pytest

SAVED_NETWORKS = "db/menu/network/TopSavedAP"
MULTI_VIEW = "memory/multiscreen/state"
WIFI = "  Wi-Fi                           On"

NOT_AN_OBJECT_OF_NETWORKS = {
    "empty": "",
    "not JSON": "saved: two",
    "cut off": '{"count": 1, "values": [{"SSID": "Bo',
    "comment": '{"count": 0} // none',
    "an empty array": "[]",
    "nested 2,000 deep": "[" * 2000 + "]" * 2000,
    "nested 2,000 deep in a member": '{"values": ' + "[" * 2000 + "]" * 2000 + "}",
    "a number": "7",
    "text": '"Boat"',
    "null": "null",
    "1 MiB of no JSON": "x" * 2**20,
}

WRONG_TYPES = {
    "an array": "[1]",
    "count is text": '{"count": "two", "values": [{"SSID": "Boat"}]}',
    "count is missing": '{"values": []}',
    "count is too large": '{"count": 99999999999, "values": []}',
    "values is text": '{"count": 1, "values": "Boat"}',
    "values is an object": '{"count": 1, "values": {"SSID": "Boat"}}',
    "an element is text": '{"count": 1, "values": ["Boat"]}',
    "the strength is missing": '{"count": 1, "values": [{"SSID": "Boat", "STATUS": ""}]}',
    "the strength is text": '{"count": 1, "values": [{"SSID": "Boat", "SIGNAL_STRENGTH": "x"}]}',
    "the name is an object": '{"count": 1, "values": [{"SSID": {}, "SIGNAL_STRENGTH": -5}]}',
    "the state is an array": '{"count": 1, "values": [{"SIGNAL_STRENGTH": -5, "STATUS": [1]}]}',
}


@pytest.mark.parametrize("text", NOT_AN_OBJECT_OF_NETWORKS.values(),
                         ids=NOT_AN_OBJECT_OF_NETWORKS.keys())
def test_a_document_that_does_not_parse_is_no_saved_network(tv, text):
    store(tv, SAVED_NETWORKS, text)
    shown = tv.run("show", "--brief")
    assert shown.returncode in (0, 1)  # 1 where the shape, not the syntax, is wrong
    assert WIFI in shown.stdout
    assert "no saved network" in shown.stdout or "SavedAP1" in shown.stderr


@pytest.mark.parametrize("text", WRONG_TYPES.values(), ids=WRONG_TYPES.keys())
def test_a_document_of_a_wrong_shape_costs_the_saved_networks_alone(tv, text):
    store(tv, SAVED_NETWORKS, text)
    shown = tv.run("show", "--brief")
    assert WIFI in shown.stdout
    if shown.returncode == 1:
        assert all("SavedAP" in line or "get_second_icon_path" in line
                   for line in shown.stderr.splitlines())
    assert "Device Name                     Living Room TV" in shown.stdout


def test_a_document_of_a_mebibyte_is_read(tv):
    networks = [{"SSID": "Boat", "SIGNAL_STRENGTH": -5, "STATUS": "", "note": "n" * 2**20}]
    store(tv, SAVED_NETWORKS, json.dumps({"count": 1, "values": networks}))
    assert tv.item("menu/network/SavedAP1")["name"] == "Boat"


@pytest.mark.parametrize("text", [
    *NOT_AN_OBJECT_OF_NETWORKS.values(),
    '{"end": "PAP_FN", "status": "PostCondition"}',
    '{"end": {"style": ["PAP_FN"]}, "status": "PostCondition"}',
    '{"end": {"style": "PAP_FN"}, "status": {"PostCondition": 1}}',
    '{"end": {"style": 5}, "status": true}',
])
def test_a_multi_view_document_that_is_not_one_leaves_the_name_free_to_change(tv, text):
    store(tv, MULTI_VIEW, text)
    assert tv.item("menu/network/devicename")["enabled"] is True
    tv.out("name", "Den")


def store(tv, key, text):
    """As another component does: a mebibyte fits neither into a command line nor into a line of the shell."""
    subprocess.run([*shlex.split(os.environ["VENTARO_STORE_TEXT"]), key], input=text, env=tv.env, text=True,
                   check=True)
