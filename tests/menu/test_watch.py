"""The menu, shown again whenever it is asked to refresh."""

WIFI = "menu/network/WiFiOnOff"
REFRESH = "db/menu/refresh_menu"


def read_menu(process):
    """The lines up to the empty one that ends a menu."""
    lines = []
    while line := process.line():
        lines.append(line)
    return lines


def test_shows_the_menu_and_shows_it_again_when_asked_to_refresh(tv):
    watch = tv.start("watch")
    assert "  Attic 6E                        Connected" in read_menu(watch)
    tv.set("db/menu/network/devicename/tv_name", "Den TV", "string")
    tv.set(REFRESH, "1", "int")
    assert "  Device Name                     Den TV" in read_menu(watch)
    assert watch.interrupt() == 0


def test_follows_a_connection_that_another_process_asks_for(tv):
    watch = tv.start("watch")
    read_menu(watch)
    tv.out("connect", "2", "--no-wait")
    while "  Garden Shed                     Connected" not in read_menu(watch):
        pass
    assert watch.interrupt() == 0


def test_ends_on_the_systems_request_too(tv):
    watch = tv.start("watch")
    read_menu(watch)
    watch.popen.terminate()
    assert watch.popen.wait(60) == 0
