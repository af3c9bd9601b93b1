"""The scenarios that come along: what the menu shows in each; and the document that says what may be in one."""

import json
import os
import pathlib
import re

import pytest

SHARE = pathlib.Path(os.environ["VENTARO_SHARE"])
DOCUMENT = pathlib.Path(__file__).parents[2] / "docs/scenario-file.md"

WIFI = "menu/network/WiFiOnOff"
SAVED = ["menu/network/SavedAP1", "menu/network/SavedAP2"]


def shown(item):
    """A saved network as the menu shows it: name, state and bars of signal."""
    if not item["enabled"]:
        return "none"
    bars = re.search(r"wifi_(\d)\.svg$", item["titleIcon"]).group(1)
    return f"{item['name']}, {item['state']}, {bars} bars"


# Wi-Fi's value, and both saved networks.
SCENARIOS = {
    "crowded": ("On", "Rosewood 3A, connected, 4 bars", "Linden Court, none, 2 bars"),
    "empty": ("Off", "none", "none"),
    "hidden": ("On", "Vault, none, 0 bars", "Attic 6E, connected, 4 bars"),
    "home": ("On", "Attic 6E, connected, 4 bars", "Garden Shed, none, 2 bars"),
    "hotel": ("On", "Hotel Aurora, connected, 4 bars", "Aurora Conference, none, 3 bars"),
    "no-wifi": (None, "none", "none"),
    "odd-names": ("On", "\"Tom's\" <TV> & 📺 غرفة, connected, 4 bars",
                  "Caf\ufffd\u001b[31m, none, 4 bars"),
    "radio-off": ("Off", "Attic 6E, none, 4 bars", "Garden Shed, none, 2 bars"),
    "weak": ("On", "Far Field, connected, 1 bars", "Beyond, none, 0 bars"),
}


def test_these_are_the_scenarios_that_come_along():
    assert SCENARIOS.keys() == {file.stem for file in (SHARE / "scenarios").glob("*.json")}


@pytest.mark.parametrize("name", SCENARIOS)
def test_each_scenario_is_shown_as_it_says(tv, name):
    tv.out("network", "load", name)
    value, *networks = SCENARIOS[name]
    assert tv.item(WIFI).get("value") == value
    assert [shown(tv.item(key)) for key in SAVED] == networks
    lines = tv.out("show", "--brief").splitlines()
    for line, network in zip(lines[3:5], networks):
        assert line.strip().startswith("(no saved network)" if network == "none" else
                                       network.split(", ")[0].replace("\x1b", r"\u001b"))


def test_a_crowd_has_forty_access_points_of_which_two_are_one_network():
    names = [point["ssid"] for point in
             json.loads((SHARE / "scenarios/crowded.json").read_text())["access_points"]]
    assert (len(names), len(set(names))) == (40, 39)


def test_a_hidden_network_gets_its_signal_when_it_is_connected(tv):
    tv.out("network", "load", "hidden")
    tv.out("connect", "1")
    assert [shown(tv.item(key)) for key in SAVED] == [
        "Vault, connected, 4 bars", "Attic 6E, none, 4 bars"]


def test_a_radio_that_goes_on_connects_to_the_first_saved_network(tv):
    tv.out("network", "load", "radio-off")
    service = tv.start("network", "serve")
    service.line()
    watch = tv.watch("db/menu/network/TopSavedAP")
    tv.out("set", "wifionoff", "on")
    while '"SSID":"Attic 6E","STATUS":"Connected"' not in (line := watch.line()):
        assert line
    assert [shown(tv.item(key)) for key in SAVED] == [
        "Attic 6E, connected, 4 bars", "Garden Shed, none, 2 bars"]


def test_without_a_wifi_device_nothing_can_be_switched_on(tv):
    tv.out("network", "load", "no-wifi")
    assert "set_int gave -1" in tv.error(1, "set", "wifionoff", "on")
    assert "no saved network" in tv.error(1, "connect", "1")


def test_names_of_any_bytes_come_through_every_form_of_the_menu(tv):
    tv.out("network", "load", "odd-names")
    odd = ["\"Tom's\" <TV> & 📺 غرفة", "Caf\ufffd\u001b[31m"]
    for words in (["show"], ["show", "--brief"], ["show", "--all", "--keys"], ["watch"]):
        process = tv.start(*words)
        for name in odd:
            while not (line := process.line()).strip().startswith(name.replace("\x1b", r"\u001b")):
                assert line
    watch = tv.start("watch", "--json")
    names = {}
    while not names.keys() >= set(SAVED):
        item = json.loads(watch.line())
        names[item["key"]] = item["name"]
    assert [names[key] for key in SAVED] == odd
    assert [tv.item(key)["name"] for key in SAVED] == odd


def test_a_network_whose_name_is_no_text_says_why_it_cannot_be_connected(tv):
    tv.out("network", "load", "odd-names")
    assert "did not connect: its name cannot be sent" in tv.error(1, "connect", "2")
    assert tv.out("connect", "1").endswith("Connected\n")


def test_every_name_of_the_odd_ones_can_be_the_first(tv):
    scenario = json.loads((SHARE / "scenarios/odd-names.json").read_text())
    expected = ["\"Tom's\" <TV> & 📺 غرفة", "Caf\ufffd\u001b[31m", "👩‍👩‍👧 שלום", "日本語のとても長い名\ufffd"]
    points = [point for point in scenario["access_points"] if point["saved"]]
    for i, name in enumerate(expected):
        tv.use_scenario({**scenario, "connected": "", "access_points": points[i:]})
        tv.out("network", "load", tv.env["VENTARO_SCENARIO"])
        assert tv.item(SAVED[0])["name"].startswith(name)


def members_known_at(tv, *path):
    """The members that the loader takes there, as it names them for one that it does not take."""
    scenario = json.loads((SHARE / "scenarios/home.json").read_text())
    place = scenario
    for step in path:
        place = place[step]
    place["zzzzzzzzzzzz"] = 1
    message = tv.error(1, "network", "load", str(tv.use_scenario(scenario)))
    return set(message.strip().split("there are: ")[1].split(", "))


def test_the_document_tells_of_every_member_and_of_no_other(tv):
    sections = DOCUMENT.read_text().split("\n## ")
    told = {section.splitlines()[0]: set(re.findall(r"^\| `(\w+)` \|", section, re.MULTILINE))
            for section in sections}
    assert told["The root"] == members_known_at(tv)
    assert told["An access point"] == members_known_at(tv, "access_points", 0)
    assert told["A profile"] == members_known_at(tv, "profiles", 0)


def test_the_folders_readme_tells_of_every_scenario():
    text = (DOCUMENT.parents[1] / "scenarios/README.md").read_text()
    assert set(re.findall(r"^\| `([\w-]+)` \|", text, re.MULTILINE)) == SCENARIOS.keys()
