"""Files that people write: what they may be at most, and that nothing waits for one that is none."""

import json
import os

import pytest

MEBIBYTE = 2**20

WAYS = {
    "a product": ["--product", "{}", "show"],
    "a scenario": ["network", "load", "{}"],
    "a menu file": ["--menu", "{}", "show"],
}


def words_for(way, file):
    return [word.format(file) for word in WAYS[way]]


@pytest.mark.parametrize("way", WAYS)
def test_what_is_no_regular_file_is_refused_by_its_name(tv, way):
    fifo = tv.folder / "fifo.json"
    os.mkfifo(fifo)
    for file, what in ((fifo, "it is a FIFO, not a file"), ("/dev/zero", "it is a device, not a file"),
                       (tv.folder, "Is a directory")):
        assert f"{file}: cannot be read: {what}\n" in tv.error(1, *words_for(way, file))


@pytest.mark.parametrize("way", WAYS)
def test_a_file_has_at_most_a_mebibyte(tv, way):
    file = tv.folder / "large.json"
    contents = {"a product": {"description": "", "flags": {}}, "a menu file": {"items": []},
                "a scenario": {"radio": False, "connected": "", "connect_milliseconds": 0, "access_points": [],
                               "profiles": []}}
    file.write_text(json.dumps(contents[way]).ljust(MEBIBYTE))
    tv.out(*words_for(way, file))
    file.write_text(json.dumps(contents[way]).ljust(MEBIBYTE + 1))
    assert f"{file}: cannot be read: it has more than 1048576 bytes\n" in tv.error(1, *words_for(way, file))


def test_a_scenario_may_be_as_large_as_a_file(tv):
    points = [{"ssid": f"Net {i:05}", "frequency_mhz": 2437, "signal_dbm": -50 - i % 40, "saved": True}
              for i in range(11000)]
    tv.use_scenario(json.dumps({"radio": True, "connected": "", "connect_milliseconds": 0, "access_points": points,
                                "profiles": []}))
    tv.out("network", "load", tv.env["VENTARO_SCENARIO"])
    assert tv.item("menu/network/SavedAP1")["name"] == "Net 00000"
    assert json.loads(tv.stored("db/menu/network/TopSavedAP"))["count"] == 11000
