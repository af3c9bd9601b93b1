"""The shell at a terminal: a line is edited, completed and remembered."""

import os
import stat

import pytest

WIFI = "menu/network/WiFiOnOff"
PROMPT = "ventaro> "
BEGIN, CLEAR, END, TAB, ENTER = "\x01", "\x03", "\x04", "\t", "\r"
UP = "\x1b[A"


@pytest.fixture
def shell(tv):
    """A shell that waits for the first line."""
    return at_prompt(tv)


def at_prompt(tv, **terminal):
    person = tv.at_terminal("shell", **terminal)
    assert '"help" shows the commands' in person.reads_until(PROMPT)
    return person


def runs(person, keys):
    """What a line shows, from the keys that are typed up to the next prompt."""
    person.types(keys + ENTER)
    person.reads_until("\r\n")
    return person.reads_until(PROMPT).removesuffix(PROMPT).replace("\r\n", "\n")


def completes(person, typed):
    """What a line becomes when its last word is completed, as the shell remembers it."""
    person.types(typed + TAB + "#" + ENTER)
    person.reads_until("\r\n")
    person.reads_until(PROMPT)


def remembered(tv):
    """The lines of the history, which has blanks in octal."""
    lines = (tv.folder / "state/shell-history").read_text().splitlines()[1:]
    return [line.encode().decode("unicode_escape").encode("latin-1").decode() for line in lines]


def test_a_line_can_be_edited(shell):
    assert runs(shell, f"et {WIFI} --brief{BEGIN}g") == "Wi-Fi   On\n"


def test_text_in_any_language_can_be_typed(tv, shell):
    assert runs(shell, "name 거실\x7f방") == "Device Name   거방\n"
    assert tv.item("devicename")["value"] == "거방"


def test_ctrl_d_leaves_the_shell(shell):
    shell.types(END)
    shell.reads_to_the_end()
    assert shell.leaves() == 0


def test_ctrl_c_clears_the_line(shell):
    shell.types("reset --yes")
    shell.reads_until("reset --yes")
    shell.types(CLEAR)
    assert shell.reads_until(PROMPT) == f"^C\r\n{PROMPT}"
    assert runs(shell, f"get {WIFI} --brief") == "Wi-Fi   On\n"


def test_ctrl_c_ends_a_command_and_not_the_shell(shell):
    shell.types(f"wait {WIFI} Off{ENTER}")
    shell.reads_until("\r\n")
    shell.types(CLEAR)
    assert shell.reads_until(PROMPT).endswith(f"\r\n{PROMPT}")
    assert runs(shell, f"get {WIFI} --brief") == "Wi-Fi   On\n"


def test_ctrl_c_and_ctrl_d_at_a_question_leave_the_shell_as_it_is(shell):
    for answer in (CLEAR, END):
        shell.types(f"choose {WIFI} Off{ENTER}")
        shell.reads_until("? ")
        shell.types(answer)
        assert "Nothing was changed." in shell.reads_until(PROMPT)


def test_a_request_to_end_ends_the_shell(shell):
    shell.popen.terminate()
    shell.reads_to_the_end()
    assert shell.leaves() == 143


def test_the_history_is_there_the_next_time_and_nobody_else_can_read_it(tv, shell):
    runs(shell, f"get {WIFI} --brief")
    shell.types(END)
    shell.reads_to_the_end()
    assert shell.leaves() == 0
    assert stat.S_IMODE((tv.folder / "state/shell-history").stat().st_mode) == 0o600
    assert runs(at_prompt(tv), UP) == "Wi-Fi   On\n"


@pytest.mark.parametrize("make", [os.mkfifo, lambda path: path.symlink_to("elsewhere")])
def test_a_history_that_is_a_pipe_or_a_link_is_not_used(tv, make):
    (tv.folder / "state").mkdir(mode=0o700)
    make(tv.folder / "state/shell-history")
    shell = at_prompt(tv)
    assert "shell-history: it is not a file" in runs(shell, f"get {WIFI} --brief")
    assert not (tv.folder / "state/elsewhere").exists()


def test_a_history_that_cannot_be_kept_is_told_once(tv):
    (tv.folder / "state/shell-history").mkdir(parents=True)
    shell = at_prompt(tv)
    assert "cannot keep the history in " in runs(shell, f"get {WIFI} --brief")
    assert runs(shell, UP) == "Wi-Fi   On\n"


@pytest.mark.parametrize("typed, line", [
    ("sto", "store "),
    ("store uns", "store unset "),
    ("he", "help "),
    ("help feat", "help feature "),
    ("get WIFION", f"get {WIFI} "),
    ("get --brief menu/network/WiF", f"get --brief {WIFI} "),
    ("get wifionoff --br", "get wifionoff --brief "),
    ("choose wifionoff OF", "choose wifionoff Off "),
    ("connect 1 --no", "connect 1 --no-wait "),
    ("store get db/menu/network/To", "store get db/menu/network/TopSavedAP "),
    ("store watch db/a db/menu/network/To", "store watch db/a db/menu/network/TopSavedAP "),
    ("store set db/a 1 --type b", "store set db/a 1 --type bool "),
    ("network load em", "network load empty "),
    ("fault set wifi_set_en", "fault set wifi_set_enable_qx "),
    ("call get_module_i", "call get_module_info "),
    ("call get_int savedap1", "call get_int menu/network/SavedAP1 "),
    ("nothing", "nothing"),
    ("name 'Den", "name 'Den"),
])
def test_a_word_is_completed(tv, typed, line):
    tv.publish(("Attic 6E", 3, 2))
    completes(at_prompt(tv), typed)
    assert remembered(tv) == [line + "#"]


def test_a_choice_with_blanks_is_quoted(tv):
    text = tv.json("list", "devicename")[0]["text"]
    assert " " in text
    completes(at_prompt(tv), f"set devicename {text.split()[0]}")
    assert remembered(tv) == [f"set devicename '{text}' #"]


def test_words_that_begin_alike_are_shown_and_the_line_goes_on(shell):
    shell.types(f"set {WIFI} o{TAB}")
    assert "Off  On\r\n" in shell.reads_until(f"{PROMPT}set {WIFI} ")
    assert runs(shell, "n") == "Wi-Fi   On\n"


def test_every_item_can_be_completed(tv, shell):
    shell.types(f"get {TAB}")
    shown = shell.reads_until(f"{PROMPT}get ")

    def keys(items):
        return [key for item in items for key in (item["key"], *keys(item.get("items", [])))]
    assert all(key in shown for key in keys(tv.json("show")))


def test_what_changes_later_is_shown_above_the_line(tv, shell):
    shell.types("get devicename --br")
    shell.reads_until("--br")
    tv.out("name", "Den TV")
    shell.reads_until("Device Name   Den TV\r\n")
    assert shell.reads_until("--br").endswith(f"{PROMPT}get devicename --br")
    assert runs(shell, "ief") == "Device Name   Den TV\n"


def test_a_request_to_refresh_is_shown_above_the_line(tv, shell):
    shell.types("get sav")
    shell.reads_until("get sav")
    tv.set("db/menu/refresh_menu", "1", "int")
    shell.reads_until("The menu is asked to refresh.\r\n")
    shell.reads_until(f"{PROMPT}get sav")


def test_a_new_size_counts_for_the_line(shell):
    shell.types("set wifi")
    shell.reads_until("set wifi")
    shell.resizes(columns=50, lines=20)
    shell.reads_until(f"{PROMPT}set wifi")
    shell.types(TAB)
    assert f"{WIFI}\r\nmenu/network/expertsettings/wifidirect\r\n" in shell.reads_until(
        f"{PROMPT}set wifi")


def test_a_terminal_that_cannot_move_the_cursor_has_a_plain_prompt(tv):
    shell = tv.at_terminal("shell", TERM="dumb")
    assert shell.reads_until(PROMPT) == PROMPT
    assert runs(shell, f"get {WIFI} --brief") == "Wi-Fi   On\n"
