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


def test_a_second_language_takes_the_place_of_a_first_that_there_is_not(tv):
    assert tv.out("show", "--brief", LANGUAGE="zh_TW:zh_CN").startswith("网络\n")
