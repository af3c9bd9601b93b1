"""All texts for who translates them, and the menu of every product."""

import json
import os
import pathlib
import re
import shutil
import subprocess

import pytest

ROOT = pathlib.Path(__file__).parents[2]
SHARE = pathlib.Path(os.environ["VENTARO_SHARE"])
PRODUCTS = sorted(file.stem for file in ROOT.glob("products/*.json"))
WIFI = "menu/network/WiFiOnOff"


def by_id(texts):
    return {text["id"]: text for text in texts}


def places(text):
    return {(place["item"], place["from"], place["state"]) for place in text["places"]}


def with_catalogue(tv, **translations):
    """Gives the TV a German catalogue in which these texts are different."""
    root = tv.folder / "share"
    shutil.copytree(SHARE, root)
    catalogue = (ROOT / "res/locale/de.po").read_text()
    for sid, text in translations.items():
        catalogue, found = re.subn(rf'(msgid "{sid}"\nmsgstr ").*"', rf'\g<1>{text}"', catalogue)
        assert found == 1, sid
    source = tv.folder / "de.po"
    source.write_text(catalogue)
    subprocess.run(["msgfmt", "-o", root / "res/locale/de/LC_MESSAGES/ventaro.mo", source],
                   check=True)
    tv.env["VENTARO_RESOURCE_ROOT"] = str(root)


def test_a_text_stands_beside_the_english_with_its_length_and_its_places(tv):
    shown = tv.out("texts", "--language", "ko", "--product", "tv")
    assert """\
COM_SID_NETWORK
  en    Network  (7 bytes, 7 columns)
  ko    네트워크  (12 bytes, 8 columns)
  in menu/general/network: get_display_name
""" in shown
    assert f"  in {WIFI}: get_string, when {WIFI} = 0\n" in shown


def test_every_callback_that_gives_texts_is_asked(tv):
    texts = tv.json("texts", "--language", "de", "--product", "tv")
    asked = {place["from"].split()[0] for text in texts for place in text["places"]}
    assert asked == {"get_display_name", "get_help_text", "get_string",
                     "get_list_item_display_value", "get_messagebox_info"}
    assert (WIFI, "get_messagebox_info second", "") in places(by_id(texts)["SID_NO"])


def test_texts_of_other_states_and_regions_are_found(tv):
    texts = by_id(tv.json("texts", "--language", "de", "--product", "tv"))
    assert (WIFI, "get_messagebox_info text", f"{WIFI} = 0") in places(
        texts["TV_SID_CHANGING_FEATURE_INCREASE_POWER"])
    assert "menu/network/MobileDeviceTV_NOT_US" in {
        place["item"] for place in texts["TV_SID_SYSTEM_POWER_ON_WITH_MOBILE"]["places"]}


def test_what_is_no_text_is_left_out(tv):
    texts = tv.json("texts", "--language", "de", "--product", "tv")
    assert not [text for text in texts if "Living Room" in text["english"]["text"]
                or "Attic" in text["english"]["text"] or "/" in text["id"]]


def test_every_product_is_asked_unless_one_is_named(tv):
    texts = tv.json("texts", "--language", "de")
    assert tv.json("texts", "--language", "de", "--product", "all") == texts
    assert {product for text in texts for place in text["places"]
            for product in place["products"]} == set(PRODUCTS)
    named = [text["places"][0]["products"] for text in texts
             if "of the projector" in text["english"]["text"]]
    assert named and all(products == ["projector"] for products in named)
    assert "; only projector\n" in tv.out("texts", "--language", "de")


def test_the_shown_menu_of_each_product_is_made_of_these_texts(tv):
    texts = tv.json("texts", "--language", "ko")
    for product in PRODUCTS:
        known = {text["translation"]["text"] for text in texts for place in text["places"]
                 if product in place["products"]}
        for key in ("menu/general/network", WIFI, "menu/network/expertsettings/easyconnect"):
            item = tv.item(key, LANGUAGE="ko", VENTARO_PRODUCT=product)
            assert {item["name"], item["help"]} <= known


def test_the_language_is_the_menus_unless_one_is_named(tv):
    first = lambda *words, **env: tv.json("texts", "--product", "tv", *words,
                                          **env)[0]["translation"]["text"]
    assert first(LANGUAGE="de") == "Netzwerk"
    assert first("--language", "fr", LANGUAGE="de") == "Réseau"
    tv.set("db/menu_widget/language", "ko_KR", "string")
    assert first(LANGUAGE="") == "네트워크"


def test_a_catalogue_that_comes_along_has_nothing_to_mark(tv):
    for catalogue in (ROOT / "res/locale").glob("*.po"):
        texts = tv.json("texts", "--language", catalogue.stem, "--product", "tv")
        assert [text["id"] for text in texts if text["marks"]] == []


@pytest.mark.parametrize("sid, most, callback", [
    ("SID_ON", 256, "get_list_item_display_value"),
    ("SID_YES", 511, "get_messagebox_info first"),
    ("TV_SID_CHANGING_FEATURE_INCREASE_POWER", 1023, "get_messagebox_info text"),
    ("COM_WI_FI_DIRECT", 2047, "get_display_name"),
    ("COM_SID_CM_CADEC_ENALBE_OPTION_WIRED802", 2047, "get_help_text"),
])
def test_a_text_that_fills_what_carries_it_is_marked(tv, sid, most, callback):
    with_catalogue(tv, **{sid: "x" * most})
    texts = tv.json("texts", "--language", "de", "--product", "tv")
    marked = [text for text in texts if text["marks"]]
    assert {text["id"] for text in marked} == {sid}
    assert all(text["marks"] == ["too long"] for text in marked)
    lines = tv.out("texts", "--language", "de", "--product", "tv").splitlines()
    told = [line for line in lines if line.endswith(f"TOO LONG: {most} bytes fit")]
    assert told and all(callback in line for line in told)


def test_a_text_that_fits_just_so_is_not_marked(tv):
    with_catalogue(tv, SID_ON="x" * 255, SID_YES="x" * 510)
    texts = by_id(tv.json("texts", "--language", "de", "--product", "tv"))
    assert texts["SID_ON"]["marks"] == texts["SID_YES"]["marks"] == []
    assert texts["SID_ON"]["translation"]["bytes"] == 255


def test_a_text_that_is_cut_inside_a_character_is_still_text(tv):
    with_catalogue(tv, SID_ON="é" * 200, COM_WI_FI_DIRECT="é" * 2000)
    texts = by_id(tv.json("texts", "--language", "de", "--product", "tv"))
    assert texts["COM_WI_FI_DIRECT"]["translation"]["bytes"] == 2047
    assert texts["COM_WI_FI_DIRECT"]["translation"]["text"].endswith("\ufffd")


def test_a_text_without_a_translation_is_marked(tv):
    with_catalogue(tv, COM_SID_NETWORK="")
    text = by_id(tv.json("texts", "--language", "de", "--product", "tv"))["COM_SID_NETWORK"]
    assert (text["marks"], text["english"]["text"]) == (["not translated"], "Network")
    assert "  NOT TRANSLATED\n" in tv.out("texts", "--language", "de", "--product", "tv")


def test_the_tv_of_the_user_is_left_alone(tv):
    tv.out("set", "wifionoff", "off")
    before = tv.out("store", "list")
    tv.out("texts", "--language", "de")
    assert tv.out("store", "list") == before


def test_what_there_is_not_is_told(tv):
    assert 'there are no texts in "tlh"; there are: ar, de' in tv.error(
        2, "texts", "--language", "tlh")
    assert 'there is no "toaster"' in tv.error(2, "texts", "--product", "toaster")


def test_the_shell_which_has_one_product_says_where_to_ask(tv):
    done = tv.run("shell", stdin="texts\n")
    assert done.returncode == 1 and "this shell has a product already" in done.stderr
    done = tv.run("shell", stdin="show\n", VENTARO_PRODUCT="all")
    assert done.returncode == 2 and 'there is no "all"' in done.stderr


def test_product_all_shows_the_menu_of_every_product(tv):
    shown = tv.out("show", "--brief", "--product", "all")
    headings = [line.split(":")[0] for line in shown.splitlines() if re.match(r"[\w-]+: ", line)]
    assert headings == PRODUCTS
    for product in PRODUCTS:
        assert tv.out("show", "--brief", "--product", product) in shown


def test_product_all_as_json_is_one_document(tv):
    documents = tv.json("show", "--product", "all")
    assert [document["product"] for document in documents] == PRODUCTS
    assert documents[0]["items"] == tv.json("show", "--product", PRODUCTS[0])


def test_product_all_fails_when_a_product_does(tv):
    tv.out("show")
    tv.publish(("Attic", "strong", "Connected"))
    done = tv.run("show", "--brief", "--product", "all")
    assert done.returncode == 1
    assert done.stdout.count("Network Status") == len(PRODUCTS)
    assert "raised an exception" in done.stderr
