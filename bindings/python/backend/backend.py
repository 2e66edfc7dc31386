"""The build backend of the package: setuptools of this system where it is installed, so that `pip install .` needs no
network; else pip downloads it.

pip builds in an environment of its own, which hides the packages of the system: they are made visible again behind it.
"""
import importlib.util
import sys
import sysconfig
from pathlib import Path

NEEDS = {"setuptools": "setuptools>=61", "wheel": "wheel", "pybind11": "pybind11>=2.10"}


def _show_system_packages():
    places = [sysconfig.get_path("purelib"), sysconfig.get_path("platlib"), "/usr/lib/python3/dist-packages"]
    # Packages of Debian belong to the Python of Debian.
    if Path(sys.base_prefix) != Path("/usr"):
        places.pop()
    for place in places:
        if place not in sys.path and Path(place).is_dir():
            sys.path.append(place)


def _missing():
    _show_system_packages()
    return [need for name, need in NEEDS.items() if importlib.util.find_spec(name) is None]


def _setuptools():
    missing = _missing()
    if missing:
        raise RuntimeError(f"the build needs {', '.join(missing)}: run script/setup python, or install them")
    from setuptools import build_meta

    return build_meta


def get_requires_for_build_wheel(config_settings=None):
    return _missing()


def get_requires_for_build_sdist(config_settings=None):
    return _missing()


def prepare_metadata_for_build_wheel(metadata_directory, config_settings=None):
    return _setuptools().prepare_metadata_for_build_wheel(metadata_directory, config_settings)


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    return _setuptools().build_wheel(wheel_directory, config_settings, metadata_directory)


def build_sdist(sdist_directory, config_settings=None):
    return _setuptools().build_sdist(sdist_directory, config_settings)
