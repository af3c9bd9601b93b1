"""The menu, shown again whenever it changes."""

import json
import re

WIFI = "menu/network/WiFiOnOff"
REFRESH = "db/menu/refresh_menu"
TYPED_NAME = "db/menu/network/devicename/tv_name"


def read_menu(process):
    """The lines up to the empty one that ends a menu."""
    lines = []
    while line := process.line():
        lines.append(line)
    return lines


def test_shows_the_menu_and_shows_it_again_when_it_changes_without_being_asked(tv):
    watch = tv.start("watch")
    assert "  Attic 6E                        Connected" in read_menu(watch)
    tv.set(TYPED_NAME, "Den TV", "string")
    assert "  Device Name                     Den TV" in read_menu(watch)
    tv.out("set", "wiredeap", "1")
    assert "    Wired 802.1X Connection       On" in read_menu(watch)
    assert watch.interrupt() == 0


def test_follows_the_language_of_the_tv(tv):
    tv.out("show")
    watch = tv.start("watch", LANGUAGE="")
    assert "  Device Name                     Living Room TV" in read_menu(watch)
    tv.set("db/menu_widget/language", "ko_KR", "string")
    assert "네트워크" in read_menu(watch)
    assert watch.interrupt() == 0


def test_shows_nothing_while_nothing_changes(tv):
    watch = tv.start("watch")
    read_menu(watch)
    tv.set(REFRESH, "1", "int")
    tv.set("db/something/else", "1", "int")
    tv.set(TYPED_NAME, "Living Room TV", "string")
    tv.set(TYPED_NAME, "Den TV", "string")
    assert "  Device Name                     Den TV" in read_menu(watch)
    assert watch.interrupt() == 0
    assert watch.popen.stdout.read() == ""


def test_json_is_each_item_in_a_line_and_then_those_that_change(tv):
    watch = tv.start("watch", "--json")
    items = [json.loads(watch.line()) for _ in range(16)]
    assert [item["key"] for item in items][0::15] == [
        "menu/general/network", "menu/network/ResetNetwork"]
    for item in items:
        assert item == tv.item(item["key"])
    tv.set(TYPED_NAME, "Den TV", "string")
    changed = json.loads(watch.line())
    assert changed["value"] == "Den TV" and changed == tv.item("devicename")
    assert watch.interrupt() == 0
    assert watch.popen.stdout.read() == ""


def test_on_a_terminal_the_menu_is_drawn_in_its_place_with_the_time_and_a_mark(tv):
    watch = tv.at_terminal("watch")
    first = watch.reads_until("Reset Network\r\n")
    assert re.match(r"\d\d:\d\d:\d\d\r\n  Network\r\n", first)
    assert "*" not in first
    tv.set(TYPED_NAME, "Den TV", "string")
    second = watch.reads_until("Reset Network\r\n")
    assert re.match(r"\x1b\[17F\x1b\[J\d\d:\d\d:\d\d\r\n  Network\r\n", second)
    assert "\x1b[1m*   Device Name                     Den TV\x1b[0m\r\n" in second
    assert second.count("*") == 1
    watch.popen.send_signal(2)
    assert watch.leaves() == 0


def test_on_a_terminal_no_line_is_wider_and_nothing_is_drawn_over_that_has_scrolled_away(tv):
    tv.publish(("A " + 40 * "very " + "long name", -50, ""))
    watch = tv.at_terminal("watch", columns=40, lines=10)
    first = watch.reads_until("Reset Network\r\n")
    assert max(map(len, first.split("\r\n"))) == 40 and "…\r\n" in first
    tv.set(TYPED_NAME, "Den TV", "string")
    assert watch.reads_until("Reset Network\r\n").startswith("\x1b[9F\x1b[J")


def test_a_terminal_without_a_cursor_gets_one_menu_after_the_other(tv):
    watch = tv.at_terminal("watch", TERM="dumb")
    watch.reads_until("Reset Network\r\n\r\n")
    tv.set(TYPED_NAME, "Den TV", "string")
    assert watch.reads_until("Reset Network\r\n\r\n").startswith("Network\r\n")


def test_follows_a_connection_that_another_process_asks_for(tv):
    watch = tv.start("watch")
    read_menu(watch)
    tv.out("connect", "2", "--no-wait")
    while "  Garden Shed                     Connected" not in read_menu(watch):
        pass
    assert watch.interrupt() == 0


def test_ends_on_the_systems_request_too(tv):
    watch = tv.start("watch")
    read_menu(watch)
    watch.popen.terminate()
    assert watch.popen.wait(60) == 0
