"""The menu of each product, and the golden files that hold it."""

import json
import os
import pathlib

import pytest

GOLDEN = pathlib.Path(__file__).parent / "golden"
PRODUCTS = sorted(file.stem for file in pathlib.Path(__file__).parents[2].glob("products/*.json"))
LANGUAGES = ["en", "ko", "ar"]

# Where a difference is meant, `scripts/update-golden` writes the files anew and shows what changed.
UPDATE = os.environ.get("VENTARO_UPDATE_GOLDEN") == "1"


@pytest.mark.parametrize("language", LANGUAGES)
@pytest.mark.parametrize("product", PRODUCTS)
def test_shows_what_the_golden_file_holds(tv, product, language):
    shown = tv.out("--product", product, "show", "--json", LANGUAGE=language)
    golden = GOLDEN / f"{product}.{language}.json"
    if UPDATE:
        golden.write_text(shown)
    assert json.loads(shown) == json.loads(golden.read_text())


def test_there_is_a_golden_file_for_each_product_and_language_and_no_other():
    assert {file.name for file in GOLDEN.iterdir()} == {
        f"{product}.{language}.json" for product in PRODUCTS for language in LANGUAGES}


def test_product_list_names_them(tv):
    assert [line.split(":")[0] for line in tv.out("product", "list").splitlines()] == PRODUCTS


def test_the_environment_chooses_a_product_and_the_option_has_precedence(tv):
    help_text = lambda *words, **env: tv.json(*words, "get", "menu/general/network", **env)["help"]
    assert "of the projector" in help_text(VENTARO_PRODUCT="projector")
    assert "of the screen" in help_text("--product", "screen", VENTARO_PRODUCT="projector")
    assert "of the screen" in help_text("--product=screen", VENTARO_PRODUCT="projector")


def test_options_of_the_program_may_stand_anywhere(tv):
    for words in (["--product", "projector", "get", "network"],
                  ["get", "--product", "projector", "network"],
                  ["get", "network", "--product=projector"]):
        assert "of the projector" in tv.json(*words)["help"]
    assert "--product wants" in tv.error(2, "show", "--product")


def test_behind_two_dashes_there_are_no_options(tv):
    assert tv.out("name", "--", "--product") == "Device Name   --product\n"


def test_an_unknown_product_names_those_there_are(tv):
    message = tv.error(2, "--product", "toaster", "show")
    assert f"there are: {', '.join(PRODUCTS)}" in message
    assert "--product wants" in tv.error(2, "--product")


def test_without_network_support_nothing_is_visible_on_a_business_product(tv):
    assert tv.json("--product", "no-network", "get", "menu/general/network")["visible"] is False
    assert tv.json("--product", "hotel-tv", "get", "menu/general/network")["visible"] is True


def test_a_business_product_keeps_the_name_for_its_administrator(tv):
    assert "disabled" in tv.error(1, "--product", "hotel-tv", "name", "Room 5")
    tv.set("memory/ephotel/hotelmenu/hotelfactorymode", "true", "bool")
    assert tv.out("--product", "hotel-tv", "name", "Room 5") == "Device Name   Room 5\n"


def test_a_flag_can_be_overridden_while_the_tv_runs(tv):
    tv.set("memory/host/feature/product.device_sid", "REP.DEVICE.PROJECTOR", "string")
    assert "of the projector" in tv.item("menu/network/expertsettings/easyconnect")["help"]


def test_the_pseudo_locale_is_longer_accented_english(tv):
    assert tv.item("menu/network/WiFiOnOff", LANGUAGE="en_XA")["name"].startswith("[Ŵî-Fî")
    assert "[ŢV" in tv.item("menu/network/expertsettings/easyconnect", LANGUAGE="en_XA")["help"]
