"""The shell: commands line by line, from a script or a person."""

import os
import pty
import subprocess

WIFI = "menu/network/WiFiOnOff"


def test_a_script_runs_line_by_line(tv):
    done = tv.run("shell", stdin=f"get {WIFI} --brief\n\n# a comment\nset {WIFI} 0\nname 'Den TV'\n")
    assert done.stdout == "Wi-Fi   On\nWi-Fi   Off\nDevice Name   Den TV\n"
    assert done.returncode == 0


def test_a_last_line_without_a_line_feed_counts(tv):
    assert tv.run("shell", stdin=f"get {WIFI} --brief").stdout == "Wi-Fi   On\n"


def test_exit_ends_a_script(tv):
    assert tv.run("shell", stdin=f"exit\nget {WIFI} --brief\n").stdout == ""


def test_a_script_goes_on_after_an_error_and_ends_with_the_first_errors_code(tv):
    done = tv.run("shell", stdin=f"frobnicate\nconnect 9\nget 'open\nget {WIFI} --brief\n")
    assert done.stdout == "Wi-Fi   On\n"
    assert done.returncode == 2
    assert 'there is no command "frobnicate"' in done.stderr
    assert "cannot read the line: " in done.stderr


LONGEST_LINE = 2**16


def test_a_line_has_at_most_64_kibibytes(tv):
    comment = "# " + "x" * (LONGEST_LINE - 2)
    done = tv.run("shell", stdin=f"{comment}\n{comment}x\nget {WIFI} --brief\n{comment * 40}")
    assert done.stdout == "Wi-Fi   On\n"
    assert done.stderr == ("ventaro: line 2: cannot read the line: it has more than 65536 bytes\n"
                           "ventaro: line 4: cannot read the line: it has more than 65536 bytes\n")
    assert done.returncode == 2


def test_the_error_of_a_long_line_has_not_all_of_it(tv):
    for words in ("x" * 60000, "get " + "x" * 60000, f"set {WIFI} " + "x" * 60000, "store get " + "x" * 60000,
                  "show " + "x" * 60000, "get '" + "x" * 60000):
        done = tv.run("shell", stdin=f"{words}\nget {WIFI} --brief\n")
        assert (done.returncode, done.stdout) == (2, "Wi-Fi   On\n")
        assert len(done.stderr) < 6000


def test_a_nul_in_a_line_does_not_hide_what_stands_behind_it(tv):
    done = tv.run("shell", stdin=f"get {WIFI} --brief\0 --json\nget {WIFI} --brief\n")
    assert done.stdout == "Wi-Fi   On\n"
    assert done.stderr == "ventaro: line 1: cannot read the line: there is a NUL in it\n"


def test_an_error_of_a_script_names_the_line(tv):
    done = tv.run("shell", stdin=f"# all of it\n\nget 'open\nset {WIFI}\nexpect {WIFI} off\nbogus\n")
    lines = done.stderr.splitlines()
    assert lines[0].startswith("ventaro: line 3: cannot read the line: ")
    assert lines[1].startswith("ventaro set: line 4: VALUE is required")
    assert lines[2] == f'ventaro: line 5: {WIFI}: expected "off", but it shows "On"'
    assert lines[3].startswith('ventaro: line 6: there is no command "bogus"')


def test_help_is_a_command_of_the_shell(tv):
    assert tv.run("shell", stdin="help\n").stdout == tv.out("--help")
    assert tv.run("shell", stdin="?\n").stdout == tv.out("--help")
    assert tv.run("shell", stdin="help store get\n").stdout == tv.out("store", "get", "--help")


def test_there_is_no_shell_in_the_shell(tv):
    assert "this is the shell already" in tv.run("shell", stdin="shell\n").stderr


def test_the_provider_is_loaded_once(tv):
    tv.run("shell", stdin=f"get {WIFI} --brief\nget {WIFI} --brief\nshow\n")
    log = (tv.folder / "state/log/platform.log").read_text()
    assert log.count("profile type ethernet") == 1


def test_timers_and_notifications_run_while_a_line_is_waited_for(tv):
    shell = tv.start("shell")
    shell.type(f"set {WIFI} 0")
    assert shell.line() == "Wi-Fi   Off"
    watch = tv.watch("db/menu/refresh_menu")
    watch.line_until("db/menu/refresh_menu = 1")
    assert shell.finish() == 0


def test_the_network_service_runs_inside(tv):
    shell = tv.start("shell")
    shell.type("connect 2")
    assert [shell.line(), shell.line()] == ["Garden Shed   Connecting", "Garden Shed   Connected"]
    assert shell.finish() == 0


def test_a_person_gets_a_prompt_beside_the_output(tv):
    leader, follower = pty.openpty()
    tv.out("show")
    with subprocess.Popen([*tv.program, "shell"], stdin=follower,
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                          env=tv.env) as person:
        os.write(leader, f"get {WIFI} --brief\nexit\n".encode())
        assert person.communicate() == ("Wi-Fi   On\n", "ventaro> ventaro> ")
        assert person.returncode == 0
    os.close(leader)
    os.close(follower)


def test_a_script_may_have_blanks_comments_and_the_line_ends_of_other_systems(tv):
    done = tv.run("shell", stdin=f"  # all of it\r\n#\n\r\n get {WIFI} --brief \r\n exit \r\nshow\n")
    assert (done.returncode, done.stdout, done.stderr) == (0, "Wi-Fi   On\n", "")


def test_a_request_to_end_ends_the_shell_and_its_commands(tv):
    shell = tv.start("shell")
    shell.type("network serve")
    shell.type(f"get {WIFI} --brief")
    assert shell.line() != ""
    shell.popen.terminate()
    assert shell.popen.wait(60) == 143
