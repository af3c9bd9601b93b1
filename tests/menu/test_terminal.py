"""The menu as a person at a terminal sees it, and the program's own words in it."""

import os
import pathlib
import re
import unicodedata

import pytest

WIFI = "menu/network/WiFiOnOff"
DIRECT = "menu/network/expertsettings/wifidirect"
LANGUAGES = sorted(
    file.stem for file in (pathlib.Path(__file__).parents[2] / "res/locale").glob("*.po"))


def columns(text):
    return sum(2 if unicodedata.east_asian_width(c) in "WF" else 1 for c in text
               if not unicodedata.combining(c))


def plain(text):
    return re.sub(r"\033\[[0-9;]*m", "", text)


def test_shows_name_value_help_and_choices_with_the_current_one_marked(tv):
    tv.out("set", DIRECT, "1")
    shown = plain(tv.on_screen("show"))
    assert ("  Attic 6E                        Connected\n"
            "  Garden Shed\n"
            "  Wi-Fi                           On\n"
            "    Turn Wi-Fi on or off.\n"
            "      0 Off  (asks first)\n"
            "    * 1 On  (asks first)\n"
            "    asks: Some features will not be available without Wi-Fi. Do you want to\n"
            "    continue?  [Yes] [No]\n") in shown
    assert "\n      * 1 On  (then refreshes)\n" in shown


def test_shows_no_icons_and_no_states_that_cannot_be_chosen(tv):
    shown = tv.on_screen("show")
    assert "icon" not in shown and "loading" not in shown and "disconnected" not in shown


def test_names_are_bold_and_help_texts_are_dim(tv):
    shown = tv.on_screen("show")
    assert "\033[1mWi-Fi\033[0m" in shown
    assert "\033[2mTurn Wi-Fi on or off.\033[0m" in shown
    assert "\033[1m* 1 On  (asks first)\033[0m" in shown


@pytest.mark.parametrize("language", ["en", "ja", "ko", "zh_CN"])
@pytest.mark.parametrize("width", [60, 72])
def test_texts_are_wrapped_to_the_width(tv, language, width):
    shown = plain(tv.on_screen("show", columns=width, LANGUAGE=language))
    assert max(columns(line) for line in shown.splitlines()) <= width
    texts = [item["help"] for item in tv.json("show", LANGUAGE=language)[0]["items"]]
    without_blanks = lambda text: re.sub(r"\s", "", text)
    assert all(without_blanks(text) in without_blanks(shown) for text in texts)


def test_the_environments_width_has_precedence(tv):
    shown = plain(tv.on_screen("show", columns=200, COLUMNS="50"))
    assert max(map(len, shown.splitlines())) <= 50


def test_all_is_the_listing_that_a_pipe_gets(tv):
    assert tv.on_screen("show", "--all") == tv.out("show")
    assert tv.on_screen("get", WIFI, "--all") == tv.out("get", WIFI)
    assert tv.out("show", "--all") == tv.out("show")


def test_brief_is_the_same_on_a_terminal(tv):
    assert tv.on_screen("show", "--brief") == tv.out("show", "--brief")


def test_keys_are_shown_where_they_are_asked_for(tv):
    assert WIFI not in tv.on_screen("show") and WIFI not in tv.out("show")
    assert f"\n    {WIFI}\n" in plain(tv.on_screen("show", "--keys"))
    assert f"\n      key:         {WIFI}\n" in tv.out("show", "--keys")
    assert tv.out("get", WIFI, "--brief", "--keys") == f"Wi-Fi   On\n    key:         {WIFI}\n"


def test_there_is_colour_on_a_terminal_only(tv):
    assert "\033" in tv.on_screen("show")
    assert "\033" not in tv.out("show")


def test_the_environment_can_do_without_colour(tv):
    coloured = tv.on_screen("show")
    assert tv.on_screen("show", NO_COLOR="1") == plain(coloured)
    assert tv.on_screen("show", TERM="dumb") == plain(coloured)
    assert tv.on_screen("show", NO_COLOR="") == coloured


def test_the_option_for_colour_has_precedence(tv):
    coloured = tv.on_screen("show")
    assert tv.on_screen("show", "--color", "never") == plain(coloured)
    assert tv.on_screen("--color=always", "show", NO_COLOR="1") == coloured
    assert tv.out("show", "--color", "always", COLUMNS="80") == coloured
    assert tv.error(2, "show", "--color", "sometimes") == (
        'ventaro: --color or VENTARO_COLOR is "sometimes"; there are: auto, never, always\n')


def test_without_a_word_three_lines_say_what_to_type_next(tv):
    shown = tv.on_screen()
    menu = tv.on_screen("show")
    assert shown.startswith(menu + "\n")
    typed = os.path.basename(tv.program[-1])
    steps = [line.split("   ")[0] for line in shown[len(menu) + 1:].splitlines()]
    assert [step.split(f"{typed} ")[1] for step in steps] == [
        "show --keys", "choose WiFiOnOff 0", "--help"]
    assert tv.out("choose", "WiFiOnOff", "0", "--yes") == "Wi-Fi   Off\n"


def test_the_programs_own_words_are_in_the_menus_language(tv):
    assert "  Attic 6E                 연결됨\n" in tv.out("show", "--brief", LANGUAGE="ko")
    assert tv.out("connect", "2", LANGUAGE="de") == (
        "Garden Shed   Verbinden\nGarden Shed   Verbunden\n")
    assert "0 Aus  (fragt vorher)\n" in tv.out("list", WIFI, LANGUAGE="de")
    tv.publish()
    assert "(kein gespeichertes Netzwerk)" in tv.out("show", "--brief", LANGUAGE="de")
    assert "(deaktiviert)" in tv.out("show", "--brief", LANGUAGE="de")


@pytest.mark.parametrize("language", [each for each in LANGUAGES if each != "en"])
def test_no_word_stays_english_in_another_language(tv, language):
    shown = tv.out("show", LANGUAGE=language)
    for word in ("Connected", "(asks first)", "(then refreshes)", "title icon:", "choice:"):
        assert word not in shown


def test_the_pseudo_locale_has_the_programs_own_words_too(tv):
    assert "[Çóńńéçţéď" in tv.out("show", "--brief", LANGUAGE="en_XA")


def test_a_saved_networks_states_are_not_called_choices(tv):
    shown = tv.out("get", "savedap1")
    assert "state:       0 disconnected\n" in shown and "choice:" not in shown
