"""Option lists, and choosing from them as a person does."""

import pytest

WIFI = "menu/network/WiFiOnOff"
NAME = "menu/network/devicename"
SOME_FEATURES = ("Some features will not be available without Wi-Fi. "
                 "Do you want to continue?")


def test_list_shows_entries_with_what_follows_their_choice(tv):
    assert tv.out("list", WIFI) == "0 Off  (asks first)\n1 On  (asks first)\n"
    assert tv.out("list", "menu/network/WiredEAP") == (
        "0 Off  (then refreshes)\n1 On  (then refreshes)\n")
    assert tv.out("list", NAME) == "0 Living Room TV\n1 User Input  (then refreshes)\n"
    assert tv.json("list", "menu/network/SavedAP1")[2] == {
        "text": "connected", "value": 2, "then": "none"}


def test_switching_wifi_on_asks_only_under_the_energy_regulation(tv):
    assert tv.json("list", WIFI, VENTARO_PRODUCT="projector") == [
        {"text": "Off", "value": 0, "then": "message-box"},
        {"text": "On", "value": 1, "then": "none"}]


def test_list_of_an_item_without_one_names_those_with_one(tv):
    message = tv.error(2, "list", "menu/network/networkstatus")
    assert "has no option list; these have one:" in message and WIFI in message


def test_box_shows_the_text_and_the_two_buttons(tv):
    assert tv.out("box", WIFI) == SOME_FEATURES + "\n[Yes] [No]\n"
    tv.out("set", WIFI, "0")
    box = tv.json("box", WIFI)
    assert "power" in box["text"]
    assert (box["buttons"], box["type"]) == (["Yes", "No"], 2)


def test_an_item_that_never_asks_has_no_box(tv):
    for key in (NAME, "menu/network/networkstatus", "menu/network/SavedAP1"):
        message = tv.error(2, "box", key)
        assert message.startswith(f'ventaro: "{key}" asks nothing before it is changed; these ask:')
        assert message.splitlines()[1:] == [f"  {WIFI}", "  menu/network/MobileDeviceTV_US"]


def test_where_nothing_asks_nothing_that_asks_is_named(tv):
    menu = tv.folder / "menu.json"
    menu.write_text('{"items": [{"key": "menu/network/WiredEAP", "kind": "choice"}]}')
    assert tv.error(2, "box", "wiredeap", "--menu", str(menu)) == (
        'ventaro: "menu/network/WiredEAP" asks nothing before it is changed\n')


def test_without_a_terminal_an_entry_that_asks_needs_yes_and_changes_nothing(tv):
    message = tv.error(3, "choose", WIFI, "0")
    assert SOME_FEATURES in message and '--yes answers "Yes"' in message
    assert tv.item(WIFI)["value"] == "On"


def test_yes_answers_the_box(tv):
    assert tv.out("choose", WIFI, "0", "--yes") == "Wi-Fi   Off\n"


def test_an_entry_that_does_not_ask_is_chosen_at_once(tv):
    assert tv.out("choose", "menu/network/WiredEAP", "1") == "Wired 802.1X Connection   On\n"


def test_a_person_is_asked_and_yes_goes_on(tv):
    for answer in ("1", "Yes", "yes", "y"):
        tv.out("set", WIFI, "1")
        person = tv.at_terminal("choose", WIFI, "0")
        assert "1 Yes\r\n2 No\r\n" in person.reads_until("? ")
        person.answers(answer)
        person.reads_until("Wi-Fi   Off")
        assert person.leaves() == 0


@pytest.mark.parametrize("answer", ["2", "No", "n"])
def test_no_changes_nothing(tv, answer):
    person = tv.at_terminal("choose", WIFI, "0")
    person.reads_until("\r\n? ")
    person.answers(answer)
    assert person.leaves() == 0
    assert tv.item(WIFI)["value"] == "On"


@pytest.mark.parametrize("answer", ["", "yes please", "3"])
def test_what_is_no_answer_is_asked_again(tv, answer):
    person = tv.at_terminal("choose", WIFI, "0")
    person.reads_until("\r\n? ")
    person.answers(answer)
    person.reads_until("\r\n? ")
    person.answers("1")
    assert person.leaves() == 0
    assert tv.item(WIFI)["value"] == "Off"


@pytest.mark.parametrize("key, code", [("\x03", 130), ("\x04", 3)])
def test_ctrl_c_and_ctrl_d_end_a_question_without_an_answer(tv, key, code):
    person = tv.at_terminal("choose", WIFI, "0")
    person.reads_until("\r\n? ")
    person.types(key)
    assert "\nNothing was changed." in person.reads_to_the_end()
    assert person.leaves() == code
    assert tv.item(WIFI)["value"] == "On"


def test_an_unknown_entry_is_an_error_that_lists_the_entries(tv):
    assert "it has 0 (Off), 1 (On)" in tv.error(2, "choose", WIFI, "2", "--yes")
    assert tv.item(WIFI)["value"] == "On"
