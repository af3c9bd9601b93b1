"""The shell: commands line by line, from a script or a person."""

import os
import pty

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


def test_a_person_gets_a_prompt(tv):
    leader, follower = pty.openpty()
    shell = tv.start("get", WIFI)  # makes the store, so that the pty shows the shell alone
    shell.popen.wait()
    import subprocess
    program = os.environ["VENTARO_PROGRAM"]
    with subprocess.Popen([program, "shell"], stdin=follower, stdout=subprocess.PIPE, text=True,
                          env=tv.env) as person:
        os.write(leader, f"get {WIFI} --brief\nexit\n".encode())
        assert person.stdout.read() == "ventaro> Wi-Fi   On\nventaro> "
        assert person.wait() == 0
    os.close(leader)
    os.close(follower)
