"""The packages: installed into a folder that serves as a machine's root, and used from there."""

import json
import os
import pathlib
import re
import shlex
import shutil
import subprocess

import pytest

SOURCE = pathlib.Path(os.environ["VENTARO_SOURCE"])
BUILD = pathlib.Path(os.environ["VENTARO_BUILD"])
LIBRARY_DIR = os.environ["VENTARO_LIBRARY_DIR"]
EMULATOR = os.environ["VENTARO_EMULATOR"]
TOOLCHAIN = os.environ["VENTARO_TOOLCHAIN"]
# dpkg runs ldconfig, which is not on the PATH of an ordinary user.
os.environ["PATH"] += ":/usr/sbin:/sbin"
NAMES = ["ventaro-dev", "ventaro-menu", "ventaro-platform", "ventaro-provider"]


def run(*words, **options):
    done = subprocess.run([str(word) for word in words], capture_output=True, text=True,
                          check=False, **options)
    assert done.returncode == 0, (words, done.stdout, done.stderr)
    return done.stdout


@pytest.fixture(scope="session")
def packages(tmp_path_factory):
    folder = tmp_path_factory.mktemp("packages")
    run("cpack", "--config", BUILD / "CPackConfig.cmake", "-B", folder, cwd=folder)
    return {file.name.split("_")[0]: file for file in folder.glob("*.deb")}


@pytest.fixture(scope="session")
def root(packages, tmp_path_factory):
    """A root folder with the packages installed, by dpkg, and nothing else."""
    folder = tmp_path_factory.mktemp("root")
    database = folder / "var/lib/dpkg"
    for name in ("info", "updates", "triggers"):
        (database / name).mkdir(parents=True)
    (database / "status").touch()
    architecture = run("dpkg-deb", "--field", packages["ventaro-menu"], "Architecture").strip()
    (database / "arch").write_text(architecture + "\n")
    # Their Debian dependencies come from this machine, not from this folder.
    run("fakeroot", "dpkg", f"--root={folder}", "--force-depends", "--force-not-root",
        "--force-architecture", "--log=/dev/null", "--install", *packages.values())
    return folder


@pytest.fixture(scope="session")
def program(root, tmp_path_factory):
    """The command that starts the installed program, under the emulator if there is one."""
    file = tmp_path_factory.mktemp("bin") / "ventaro"
    file.write_text(f'#!/bin/sh\nexec {EMULATOR} {shlex.quote(str(root / "usr/bin/ventaro"))} "$@"\n')
    file.chmod(0o755)
    return file


@pytest.fixture
def environment(tmp_path):
    return {"PATH": os.environ["PATH"], "LANGUAGE": "en",
            "VENTARO_STATE_DIR": str(tmp_path / "state"),
            "VENTARO_RUNTIME_DIR": str(tmp_path / "runtime")}


def test_there_are_four_packages_of_one_version(packages):
    assert sorted(packages) == NAMES
    fields = {run("dpkg-deb", "--show", "--showformat=${Version} ${Architecture}", file)
              for file in packages.values()}
    assert len(fields) == 1


def test_the_menu_needs_the_provider_and_the_platform_in_its_own_version(packages):
    version = run("dpkg-deb", "--field", packages["ventaro-menu"], "Version").strip()
    for name in ("ventaro-menu", "ventaro-dev"):
        depends = run("dpkg-deb", "--field", packages[name], "Depends")
        for other in ("ventaro-provider", "ventaro-platform"):
            assert f"{other} (= {version})" in depends


def libraries_needed(file):
    names = re.findall(r"NEEDED.*\[(.*)\]", run("readelf", "-d", file))
    return {re.sub(r"\.so.*", "", name) for name in names} - {"libventaro-platform"}


@pytest.mark.parametrize("package, file", [
    ("ventaro-provider", "libventaro.so"),
    ("ventaro-platform", "libventaro-platform.so"),
    ("ventaro-menu", "ventaro"),
])
def test_a_package_needs_the_debian_packages_of_the_libraries_it_is_linked_to(
        packages, root, package, file):
    binary = next(path for path in (root / "usr").rglob(file)
                  if path.is_file() and not path.is_symlink() and path.read_bytes()[:4] == b"\x7fELF")
    depends = run("dpkg-deb", "--field", packages[package], "Depends")
    packages_of = {"libm": "libc6", "libc": "libc6", "libgcc_s": "libgcc-s1",
                   "libstdc++": "libstdc++6", "libjsoncpp": "libjsoncpp", "liblmdb": "liblmdb",
                   "libglib-2.0": "libglib2.0", "libspdlog": "libspdlog", "libfmt": "libfmt",
                   "libedit": "libedit2"}
    for library in libraries_needed(binary):
        if not library.startswith("ld-linux"):
            assert packages_of[library] in depends


def test_the_installed_program_shows_the_menu(program, environment):
    shown = json.loads(run(program, "show", "--json", env=environment))
    golden = json.loads((SOURCE / "tests/menu/golden/tv.en.json").read_text())
    assert shown == golden


def test_the_installed_catalogues_are_used(program, environment):
    assert "네트워크" in run(program, "show", "--brief", env={**environment, "LANGUAGE": "ko"})


def test_nothing_installed_knows_where_it_was_built(root):
    for file in (root / "usr").rglob("*"):
        if file.is_file():
            content = file.read_bytes()
            assert str(BUILD).encode() not in content, file
            assert str(SOURCE).encode() + b"/" not in content, file


def test_no_binary_looks_for_libraries_in_a_relative_or_writable_folder(root):
    run(SOURCE / "scripts/check-binaries", root / "usr")


def test_the_program_finds_its_libraries_where_the_packages_put_them(root):
    runpath = re.search(r"RUNPATH.*\[(.*)\]", run("readelf", "-d", root / "usr/bin/ventaro"))[1]
    folder = (root / "usr/bin" / runpath.removeprefix("$ORIGIN/")).resolve()
    assert sorted(file.name for file in folder.iterdir()) == [
        "libventaro-platform.so", "libventaro.so"]
    assert folder == (root / "usr" / LIBRARY_DIR).resolve()


@pytest.fixture
def example(root, tmp_path):
    """A copy of the installed example."""
    return shutil.copytree(root / "usr/share/doc/ventaro-dev/examples", tmp_path / "example")


# Some compilers link as needed by default, and the example calls nothing in the platform.
def build_with_cmake(root, example):
    settings = ["-G", "Ninja", f"-Dventaro_DIR={root}/usr/{LIBRARY_DIR}/../cmake/ventaro",
                # A target's toolchain file has flags of its own, which these must not replace.
                "-DCMAKE_BUILD_TYPE=Debug",
                "-DCMAKE_C_FLAGS_DEBUG=-Wall -Wextra -Wpedantic -Wconversion -Werror",
                "-DCMAKE_EXE_LINKER_FLAGS=-Wl,--as-needed"]
    if TOOLCHAIN:
        settings += [f"-DCMAKE_TOOLCHAIN_FILE={TOOLCHAIN}"]
    run("cmake", "-S", example, "-B", example / "build", *settings)
    run("cmake", "--build", example / "build")
    return example / "build/host"


def build_as_its_readme_says(root, example):
    env = {**os.environ, "PKG_CONFIG_PATH": f"{root}/usr/{LIBRARY_DIR}/../pkgconfig"}
    command = re.search(r"^cc .*$", (example / "README.md").read_text(), re.MULTILINE)[0]
    as_needed = 'cc() { command cc -Wl,--as-needed "$@"; }'
    run("sh", "-c", f"{as_needed}; {command}", cwd=example, env=env)
    return example / "host"


# The pkg-config of this machine knows no other architecture.
@pytest.mark.parametrize("build", [build_with_cmake] if TOOLCHAIN else
                         [build_with_cmake, build_as_its_readme_says])
def test_the_installed_example_builds_with_the_installed_packages_and_shows_the_menu(
        root, build, example, environment):
    host = build(root, example)
    said = lambda language: run(*shlex.split(EMULATOR), host,
                                env={**environment, "LANGUAGE": language}).splitlines()
    states = ["Attic 6E", "  0 disconnected", "  1 loading", "  2 connected"]
    assert said("en") == ["Wi-Fi", "On", "  0 &#x202d;Living Room TV", "  1 User Input", *states]
    assert said("ko") == ["Wi-Fi", "켜기", "  0 &#x202d;Living Room TV", "  1 사용자 입력", *states]


def test_the_man_page_tells_of_the_commands_in_this_version(packages, root):
    page = run("gzip", "-dc", root / "usr/share/man/man1/ventaro.1.gz")
    version = run("dpkg-deb", "--field", packages["ventaro-menu"], "Version").strip()
    assert f'"ventaro {version}"' in page and ".B store watch KEY" in page and "@" not in page


def complete(root, program, environment, *words):
    """What Bash offers for the last of the words."""
    file = root / "usr/share/bash-completion/completions/ventaro"
    script = ('source "$1"; program=$2; shift 2; COMP_WORDS=("$program" "$@"); COMP_CWORD=$#; '
              '_ventaro "$program" "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD-1]}"; '
              'printf "%s\\n" "${COMPREPLY[@]}"')
    return run("bash", "-c", script, "bash", file, program, *words, env=environment).split()


@pytest.mark.parametrize("words, offered", [
    (["sh"], ["show", "shell"]),
    (["--pro"], ["--product", "--provider"]),
    (["--product", "modular"], ["modular-display-2", "modular-display"]),
    (["--product", "tv", "st"], ["store"]),
    (["store", ""], ["--help", "get", "list", "set", "unset", "watch"]),
    (["store", "set", "--"], ["--help", "--type", "--json"]),
    (["store", "set", "--type", ""], ["int", "bool", "string"]),
    (["network", "load", "ho"], ["home", "hotel"]),
    (["texts", "--"], ["--help", "--language", "--json"]),
    (["--product", "a"], ["all"]),
    (["get", "--json", "menu/network/Wi"], ["menu/network/WiFiOnOff", "menu/network/WiredEAP"]),
    (["get", "menu/network/Wi"], ["menu/network/WiFiOnOff", "menu/network/WiredEAP"]),
    (["set", "menu/network/WiFiOnOff", "--"], ["--help", "--json", "--wait"]),
    (["wait", "menu/network/WiFiOnOff", "--"], ["--help", "--json", "--within"]),
    (["connect", ""], ["1", "2"]),
    (["product", "l"], ["list"]),
    (["product", "list", ""], ["--help", "--json"]),
])
def test_bash_completes(root, program, environment, words, offered):
    assert sorted(complete(root, program, environment, *words)) == sorted(offered)
