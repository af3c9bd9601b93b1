"""The message catalogues: complete, and consistent where they must be."""

import json
import os
import pathlib
import re
import subprocess

import pytest

ROOT = pathlib.Path(os.environ["VENTARO_SOURCE"])
CATALOGUES = sorted((ROOT / "res/locale").glob("*.po"))
MENU_CATALOGUES = sorted((ROOT / "res/menu").glob("*.po"))
SID = re.compile(r'"((?:COM|TV|PJT|REP|SID)[_.][A-Z0-9_.]*(?:[A-Z0-9]))"')


def messages(catalogue):
    """The translations of a catalogue by string ID, as the compiled catalogue has them."""
    text = subprocess.run(["msgcat", "--no-wrap", catalogue], capture_output=True, text=True,
                          check=True).stdout
    pairs = re.findall(r'^msgid "(.+)"\nmsgstr "(.*)"$', text, re.MULTILINE)
    return dict(pairs)


def used_sids():
    """The string IDs that the provider and the products name."""
    sids = set()
    for source in (ROOT / "src").rglob("*.cpp"):
        sids |= set(SID.findall(source.read_text()))
    for product in (ROOT / "products").glob("*.json"):
        sids.add(json.loads(product.read_text())["flags"]["product.device_sid"])
    return sids - {"NOT_READY"}


def test_the_search_finds_string_ids():
    assert {"SID_ON", "COM_WI_FI", "REP.DEVICE.TV", "PJT_SID_TV"} <= used_sids()
    assert len(used_sids()) >= 48


def test_there_are_the_languages_that_the_tv_is_sold_with():
    assert {c.stem for c in CATALOGUES} >= {"en", "de", "es", "fr", "ko", "ar"}


@pytest.mark.parametrize("catalogue", CATALOGUES, ids=lambda c: c.stem)
class TestEveryCatalogue:
    def test_is_well_formed(self, catalogue):
        subprocess.run(["msgfmt", "--check", "-o", os.devnull, catalogue], check=True)

    def test_translates_every_string_id_that_is_used(self, catalogue):
        translated = {sid for sid, text in messages(catalogue).items() if text}
        assert used_sids() - translated == set()

    def test_has_the_string_ids_of_the_english_one(self, catalogue):
        assert messages(catalogue).keys() == messages(ROOT / "res/locale/en.po").keys()

    def test_carries_the_tokens_of_the_english_one(self, catalogue):
        tokens = lambda text: sorted(re.findall(r"<<[A-D]>>", text))
        english = {s: tokens(t) for s, t in messages(ROOT / "res/locale/en.po").items()}
        assert {s: tokens(t) for s, t in messages(catalogue).items()} == english

    def test_fits_the_buffers_of_the_menu(self, catalogue):
        too_long = [s for s, t in messages(catalogue).items() if len(t.encode()) > 2047]
        assert too_long == []


def own_words():
    """The words that the program translates."""
    sources = "".join(source.read_text() for source in (ROOT / "menu").rglob("*.cpp"))
    labels = re.findall(r'constexpr char k\w+\[\] = "([a-z ]+:)";', sources)
    return set(re.findall(r'translated\("(.+?)"\)', sources)) | set(labels)


def test_the_search_finds_the_programs_own_words():
    assert {"Connected", "(asks first)", "title icon:"} <= own_words()


def test_the_program_speaks_the_languages_of_the_menu():
    assert [c.name for c in MENU_CATALOGUES] == [c.name for c in CATALOGUES]


@pytest.mark.parametrize("catalogue", MENU_CATALOGUES, ids=lambda c: c.stem)
class TestEveryCatalogueOfTheProgram:
    def test_is_well_formed(self, catalogue):
        subprocess.run(["msgfmt", "--check", "-o", os.devnull, catalogue], check=True)

    def test_translates_each_of_its_words_and_nothing_else(self, catalogue):
        assert {word for word, text in messages(catalogue).items() if text} == own_words()

    def test_keeps_the_colon_behind_a_word_that_stands_before_something(self, catalogue):
        for word, text in messages(catalogue).items():
            assert word.endswith(":") == text.endswith((":", "\uff1a"))
