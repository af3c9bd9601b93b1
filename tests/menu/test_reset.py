"""The TV as it left the factory."""


NAME = "db/menu/network/devicename/tv_name"


def change(tv):
    tv.out("name", "Den")
    tv.set("db/own", "1", "int")
    tv.out("fault", "set", "wifi_set_enable_qx", "-9")
    tv.out("connect", "2")


def all_but_the_answer(tv):
    """What the store holds, but for what the network service last answered."""
    return [e for e in tv.json("store", "list") if e["key"] != "memory/host/network/answer"]


def test_reset_makes_the_store_and_the_network_as_they_were_at_first(tv):
    tv.out("show")
    first = all_but_the_answer(tv)
    change(tv)
    assert tv.out("reset", "--yes") == "The TV is as it left the factory.\n"
    tv.out("show")  # loads the provider, which writes as well
    assert all_but_the_answer(tv) == first


def test_reset_wants_an_answer(tv):
    tv.out("name", "Den")
    assert "nobody is here to answer" in tv.error(3, "reset")
    assert tv.stored(NAME) == "Den"


def test_reset_tells_programs_that_run(tv):
    tv.out("name", "Den")
    tv.set("db/own", "1", "int")
    watch = tv.watch(NAME, "db/own")
    tv.out("reset", "--yes")
    shown = {watch.line() for _ in range(3)}
    assert f"{NAME} = Living Room TV" in shown and "db/own is not set" in shown


def test_reset_in_the_shell_leaves_what_is_done_after_it(tv):
    done = tv.run("shell", stdin="name Den\nreset --yes\nconnect 2\n")
    assert done.returncode == 0, done.stderr
    assert tv.item("menu/network/SavedAP2")["state"] == "connected"
    assert tv.stored(NAME) == "Living Room TV"
