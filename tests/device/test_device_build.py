"""The provider, built for a device that brings its own libraries."""

import os
import pathlib
import re
import shutil
import subprocess

import pytest

SOURCE = pathlib.Path(os.environ["VENTARO_SOURCE"])
LIBRARY = pathlib.Path(os.environ["DEVICE_LIBRARY"])


def cmake(*words):
    return subprocess.run(["cmake", *words], capture_output=True, text=True, check=False)


def configure(folder, *settings):
    return cmake("-S", SOURCE, "-B", folder, "-G", "Ninja", "-DVENTARO_PLATFORM=device", *settings)


@pytest.fixture(scope="module")
def build(tmp_path_factory):
    folder = tmp_path_factory.mktemp("device")
    # The headers from a folder of the device's own.
    headers = folder / "sdk/include"
    shutil.copytree(SOURCE / "platform/include/platform", headers / "platform",
                    ignore=shutil.ignore_patterns("host"))
    done = configure(folder, "-DCMAKE_BUILD_TYPE=Release",
                     f"-DVENTARO_DEVICE_LIBRARIES={LIBRARY}",
                     f"-DVENTARO_DEVICE_INCLUDE_DIR={headers}")
    assert done.returncode == 0, done.stderr
    done = cmake("--build", folder)
    assert done.returncode == 0, done.stdout
    return folder


def languages_of(source):
    """Those with a catalogue: a device gets these, and nothing that is made for developers."""
    return {catalogue.stem for catalogue in (source / "res/locale").glob("*.po")}


def languages_in(build):
    return {file.parts[-3] for file in build.glob("share/ventaro/res/locale/*/LC_MESSAGES/*.mo")} | {
        folder.name for folder in build.glob("share/ventaro/res/locale/*")}


def dynamic_section(library):
    return subprocess.run(["readelf", "-d", library], capture_output=True, text=True,
                          check=True).stdout


def test_builds_the_provider_and_nothing_else(build):
    assert [file.name for file in (build / "lib").iterdir()] == ["libventaro.so"]
    assert not (build / "bin").exists()
    assert not (build / "share").exists()


def test_the_provider_brings_the_devices_libraries_along(build):
    needed = re.findall(r"NEEDED.*\[(.*)\]", dynamic_section(build / "lib/libventaro.so"))
    assert LIBRARY.name in needed
    assert "libventaro-platform.so" not in needed


def test_the_provider_looks_nowhere_but_where_the_device_does(build):
    assert "PATH)" not in dynamic_section(build / "lib/libventaro.so")


def test_what_is_compiled_takes_the_headers_from_the_given_folder(build):
    commands = (build / "compile_commands.json").read_text()
    assert f"{build}/sdk/include" in commands
    assert f"{SOURCE}/platform/include" not in commands


def test_installs_the_provider_alone(build, tmp_path):
    done = cmake("--install", build, "--prefix", tmp_path, "--strip")
    assert done.returncode == 0, done.stderr
    installed = [file.relative_to(tmp_path) for file in tmp_path.rglob("*") if file.is_file()]
    assert [file.name for file in installed] == ["libventaro.so"]


def test_the_provider_loads_and_works(build):
    # In a separate process, because a library that Python has loaded stays loaded.
    script = (
        "import ctypes, sys\n"
        "provider = ctypes.CDLL(sys.argv[1])\n"
        "table = ctypes.POINTER(ctypes.c_void_p)()\n"
        "assert provider.create_provider(ctypes.byref(table)) == 0\n"
        "name = ctypes.c_char_p()\n"
        "ask = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_char_p,\n"
        "                       ctypes.POINTER(ctypes.c_char_p))(table[13])\n"
        "assert ask(b'menu/network/WiFiOnOff', ctypes.byref(name)) == 0\n"
        "print(name.value.decode())\n")
    done = subprocess.run(["/usr/bin/python3", "-c", script, build / "lib/libventaro.so"],
                          capture_output=True, text=True, check=True,
                          env={**os.environ, "LD_LIBRARY_PATH": str(LIBRARY.parent)})
    assert done.stdout == "COM_WI_FI\n"


def test_the_catalogues_are_there_for_those_who_package_them(build):
    assert cmake("--build", build, "--target", "catalogues").returncode == 0
    assert languages_in(build) == languages_of(SOURCE)


def test_a_catalogue_that_is_removed_leaves_the_build(tmp_path):
    source = tmp_path / "source"
    shutil.copytree(SOURCE, source, ignore=shutil.ignore_patterns("build", ".git", "tests"))
    folder = tmp_path / "build"
    assert cmake("-S", source, "-B", folder, "-G", "Ninja", "-DVENTARO_PLATFORM=device",
                 f"-DVENTARO_DEVICE_LIBRARIES={LIBRARY}").returncode == 0
    assert cmake("--build", folder, "--target", "catalogues").returncode == 0
    assert "de" in languages_in(folder)
    (source / "res/locale/de.po").unlink()
    assert cmake("--build", folder, "--target", "catalogues").returncode == 0
    assert languages_in(folder) == languages_of(SOURCE) - {"de"}


def test_without_the_devices_libraries_it_says_what_to_name(tmp_path):
    done = configure(tmp_path)
    assert done.returncode != 0
    assert "VENTARO_DEVICE_LIBRARIES is empty" in done.stderr


def test_a_symbol_that_the_device_lacks_is_an_error_of_the_build(tmp_path):
    empty = tmp_path / "libempty.so"
    subprocess.run(["c++", "-shared", "-x", "c++", "/dev/null", "-o", empty], check=True)
    assert configure(tmp_path / "b", f"-DVENTARO_DEVICE_LIBRARIES={empty}").returncode == 0
    done = cmake("--build", tmp_path / "b")
    assert done.returncode != 0
    assert "vconf_get_str" in done.stdout


def test_another_platform_than_host_and_device_is_an_error(tmp_path):
    done = cmake("-S", SOURCE, "-B", tmp_path, "-G", "Ninja", "-DVENTARO_PLATFORM=moon")
    assert done.returncode != 0
    assert 'VENTARO_PLATFORM is "moon"; there are: host, device' in done.stderr
