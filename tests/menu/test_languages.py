"""Which catalogue a language gets, as res/locale/README.md tells."""

import pytest


def network(tv, language):
    """The menu's first name in that language."""
    return tv.run("show", "--brief", LANGUAGE=language).stdout.splitlines()[0]


@pytest.mark.parametrize("language", ["pt", "pt_BR", "pt_PT", "pt_BR.UTF-8", "tlh:pt_PT"])
def test_a_catalogue_without_a_territory_serves_all_of_its_language(tv, language):
    assert network(tv, language) == "Rede"
    assert tv.out("get", "wifionoff", "--brief", LANGUAGE=language) == "Wi-Fi   Ativado\n"


def test_a_catalogue_with_a_territory_serves_that_alone(tv):
    assert network(tv, "zh_CN") == "网络"


@pytest.mark.parametrize("language", ["zh_TW", "zh_HK", "zh"])
def test_other_chinese_than_the_simplified_is_english_and_says_so(tv, language):
    assert network(tv, language) == "Network"
    assert f'LANGUAGE is "{language}", in which there are no texts' in tv.run(
        "show", LANGUAGE=language).stderr


def test_a_list_of_languages_that_is_longer_than_a_locales_name_is_not_searched(tv):
    longest = "ko" + ":xx" * 84 + "x"
    assert len(longest) == 255
    assert network(tv, longest) == "네트워크"
    done = tv.run("show", "--brief", LANGUAGE=longest + "x")
    assert done.stdout.startswith("Network\n")
    assert done.stderr == ("ventaro: LANGUAGE has 256 bytes, more than the 255 that names of languages may have; "
                           "the menu is in English\n")
    assert network(tv, "ko" + ":xx" * 20000) == "Network"


def test_a_language_of_the_tv_that_is_longer_than_a_locales_name_is_english(tv):
    tv.set("db/menu_widget/language", "ko" + ":xx" * 100, "string")
    assert network(tv, "") == "Network"


def test_texts_of_a_language_that_is_longer_than_a_locales_name_are_none(tv):
    assert "there are no texts in" in tv.error(2, "texts", "--language", "ko" + ":xx" * 100)


def test_a_second_language_takes_the_place_of_a_first_that_there_is_not(tv):
    assert tv.out("show", "--brief", LANGUAGE="zh_TW:zh_CN").startswith("网络\n")
