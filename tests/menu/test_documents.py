"""What README, the man page and the completion say of the commands is what the program's table says."""

import pathlib
import subprocess

SCRIPT = pathlib.Path(__file__).parents[2] / "scripts/command-documents"


def test_readme_man_page_and_completion_are_those_of_the_table_of_commands(tv):
    done = subprocess.run([SCRIPT, *tv.program], capture_output=True, text=True, check=False)
    assert done.returncode == 0, f"scripts/update-golden writes this anew:\n{done.stderr}"


def test_help_lists_every_variable_and_option_of_the_program(tv):
    told = tv.out("--help")
    for word in ("--product NAME", "--provider FILE", "LANGUAGE", "VENTARO_SCENARIO"):
        assert f"\n  {word} " in told
