"""The configuration store from the command line."""

import json

NAME = "db/menu/network/devicename/tv_name"


def test_a_value_keeps_its_type(tv):
    assert tv.out("store", "set", NAME, "5") == f"{NAME} = 5\n"
    assert tv.json("store", "get", NAME) == {"key": NAME, "type": "string", "value": "5"}


def test_a_new_key_needs_a_type(tv):
    assert 'is new; say --type int, bool or string' in tv.error(2, "store", "set", "db/x", "1")
    assert tv.out("store", "set", "db/x", "-1", "--type", "int") == "db/x = -1\n"
    assert tv.stored("db/x") == -1


def test_a_value_must_be_of_its_type(tv):
    tv.set("db/x", "1", "int")
    assert '"one" is no int' in tv.error(2, "store", "set", "db/x", "one")
    assert '"99999999999" is no int' in tv.error(2, "store", "set", "db/x", "99999999999")
    assert '"yes" is no bool' in tv.error(2, "store", "set", "db/x", "yes", "--type", "bool")
    assert tv.stored("db/x") == 1


def test_a_key_outside_the_store_says_where_keys_are(tv):
    message = tv.error(2, "store", "get", "menu/x")
    assert 'bad key "menu/x": it begins neither with "db/" nor with "memory/"' in message


def test_a_missing_key_is_an_error(tv):
    assert 'the store has no "db/nothing"' in tv.error(2, "store", "get", "db/nothing")


def test_list_shows_the_values_below_a_prefix(tv):
    assert tv.out("store", "list", "db/menu/network/devicename/") == (
        "db/menu/network/devicename/default_tv_name = Living Room TV\n"
        "db/menu/network/devicename/tv_name = Living Room TV\n")


def test_list_without_a_prefix_shows_all(tv):
    shown = tv.out("store", "list")
    assert "db/menu_widget/language = en_US\n" in shown
    assert "memory/ephotel/hotelmenu/hotelfactorymode = false\n" in shown


def test_watch_shows_every_set_also_of_an_equal_value(tv):
    watch = tv.watch("db/x", "memory/y")
    for key, value in (("db/x", "1"), ("db/x", "1"), ("db/other", "9"), ("memory/y", "2")):
        tv.set(key, value, "int")
    assert [watch.line() for _ in range(3)] == ["db/x = 1", "db/x = 1", "memory/y = 2"]
    assert watch.interrupt() == 0


def test_watch_writes_one_line_of_json_for_each_set(tv):
    watch = tv.watch("db/x", "--json")
    for value in (1, 2):
        tv.set("db/x", str(value), "int")
        assert json.loads(watch.line()) == {"key": "db/x", "type": "int", "value": value}


def test_watch_ends_after_the_sets_asked_for(tv):
    watch = tv.start("store", "watch", "db/x", "--count", "1", "--json")
    watch.error_line()
    tv.set("db/x", "7", "int")
    assert json.loads(watch.popen.communicate()[0]) == {"key": "db/x", "type": "int", "value": 7}
    assert watch.popen.returncode == 0


def test_unset_removes_a_value(tv):
    tv.set("db/x", "1", "int")
    assert tv.out("store", "unset", "db/x") == "db/x is not set\n"
    assert 'the store has no "db/x"' in tv.error(2, "store", "get", "db/x")
    assert 'the store has no "db/x"' in tv.error(2, "store", "unset", "db/x")


def test_watch_shows_that_a_value_is_removed(tv):
    tv.set("db/x", "1", "int")
    watch = tv.start("store", "watch", "db/x", "--count", "1", "--json")
    watch.error_line()
    assert tv.json("store", "unset", "db/x") == {"key": "db/x", "type": None, "value": None}
    assert json.loads(watch.line()) == {"key": "db/x", "type": None, "value": None}


def test_an_unset_factory_setting_comes_back(tv):
    tv.out("store", "set", NAME, "Den")
    tv.out("store", "unset", NAME)
    assert tv.stored(NAME) == "Living Room TV"
