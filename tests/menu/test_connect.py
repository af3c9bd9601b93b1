"""Connecting to a saved network."""

import json

WIFI = "menu/network/WiFiOnOff"
DOCUMENT = "db/menu/network/TopSavedAP"


def statuses(tv):
    return [entry["STATUS"] for entry in json.loads(tv.stored(DOCUMENT))["values"]]


def test_shows_connecting_and_then_connected_and_the_previous_network_drops(tv):
    assert tv.out("connect", "2") == "Garden Shed   Connecting\nGarden Shed   Connected\n"
    assert statuses(tv) == ["Disconnected", "Connected"]
    assert tv.item("menu/network/SavedAP1")["state"] == "none"


def test_writes_the_command_that_the_network_service_reads(tv):
    tv.out("connect", "2")
    assert tv.stored("memory/NW-Daemon/Command") == (
        '{\n\t"COMMAND" : "1",\n\t"SSID" : "Garden Shed"\n}')


def test_connects_again_to_the_network_that_is_connected(tv):
    assert tv.out("connect", "1") == "Attic 6E   Connecting\nAttic 6E   Connected\n"


def test_json_tells_each_state_in_a_line_with_all_of_the_item(tv):
    told = [json.loads(line) for line in tv.out("connect", "2", "--json").splitlines()]
    assert [item["state"] for item in told] == ["connecting", "connected"]
    assert told[-1] == tv.item("menu/network/SavedAP2")
    assert told[0].keys() == told[-1].keys()


def test_json_of_what_was_only_asked_for_is_a_line_with_all_of_the_item(tv):
    for position in ("2", "1"):  # the first is connected already
        line, end = tv.out("connect", position, "--no-wait", "--json").split("\n")
        assert (json.loads(line), end) == (tv.item(f"menu/network/SavedAP{position}"), "")


def test_a_network_service_in_another_process_connects(tv):
    service = tv.start("network", "serve")
    assert service.line() == "The network service runs; Ctrl-C ends it."
    # The state between may pass before another process looks.
    assert tv.out("connect", "2").endswith("Garden Shed   Connected\n")
    assert service.interrupt() == 0


def test_there_is_one_network_service(tv):
    service = tv.start("network", "serve")
    service.line()
    assert "another process runs the network service already" in tv.error(1, "network", "serve")


def test_no_wait_asks_and_leaves_it_to_the_network_service(tv):
    service = tv.start("network", "serve")
    service.line()
    watch = tv.watch("memory/host/network/connected")
    assert tv.out("connect", "2", "--no-wait") == (
        "Asked the network service to connect to Garden Shed.\n")
    watch.line_until("memory/host/network/connected = Garden Shed")


def test_does_not_connect_while_wifi_is_off(tv):
    tv.out("set", WIFI, "0")
    assert "Garden Shed did not connect: Wi-Fi is off" in tv.error(1, "connect", "2")
    assert statuses(tv) == ["Disconnected", "Disconnected"]


def test_refuses_a_position_without_a_network(tv):
    tv.publish(("Boat", -50, ""))
    assert "no saved network at position 2" in tv.error(1, "connect", "2")


def test_names_the_positions_there_are(tv):
    assert "there is no saved network 3; there are 1, 2" in tv.error(2, "connect", "3")
    assert "POSITION" in tv.error(2, "connect", "first")


def test_a_list_that_changed_under_the_cursor_never_connects_to_another_network(tv):
    shell = tv.start("shell")
    shell.type("get menu/network/SavedAP1 --brief")
    assert shell.line() == "Attic 6E   Connected"
    tv.publish(("Evil Twin", -30, ""), ("Attic 6E", -52, ""))
    shell.type("connect 1")
    assert shell.finish() == 1
    assert ('the saved networks changed: position 1 was "Attic 6E" and is now "Evil Twin"; '
            "look at the menu again") in shell.popen.stderr.read()
    assert tv.run("store", "get", "memory/NW-Daemon/Command").returncode == 2


def test_a_network_out_of_reach_does_not_connect(tv):
    tv.publish(("Boat", -50, ""))
    assert tv.error(1, "connect", "1") == (
        "ventaro: Boat did not connect: there is no such network within reach\n")
    assert tv.item("menu/network/SavedAP1")["name"] == "Boat"  # the document is not the service's


def test_loading_a_scenario_starts_over(tv):
    tv.out("connect", "2")
    del tv.env["VENTARO_SCENARIO"]
    assert tv.out("network", "load", "home") == "Loaded the scenario home.\n"
    assert statuses(tv) == ["Connected", "Disconnected"]
    message = tv.error(2, "network", "load", "hom")
    assert 'there is no "hom" in ' in message and "scenarios; there are: " in message
