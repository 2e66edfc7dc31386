"""Builds the Python package by CMake; pyproject.toml has the rest.

The build goes to build/python/cmake and is kept: the next one is quick. FINITES_PYTHON_BUILD names another folder; a
build that stands there already, as that of script/test, keeps its options, and nothing is compiled twice.
"""
import os
import re
import shutil
import subprocess
import sys
from pathlib import Path

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

ROOT = Path(__file__).resolve().parent


def version():
    """The version of the library."""
    text = (ROOT / "include/finites/version.h").read_text()
    parts = (re.search(rf"define FINITES_VERSION_{part} +(\d+)", text) for part in ("MAJOR", "MINOR", "PATCH"))
    return ".".join(part.group(1) for part in parts)


class CMakeBuild(build_ext):
    """The compiled module by CMake, and the libraries that it needs, beside it in the package."""

    def build_extension(self, ext):
        build = Path(os.environ.get("FINITES_PYTHON_BUILD", ROOT / "build/python/cmake")).resolve()
        options = {"FINITES_PYTHON": "ON", "Python_EXECUTABLE": sys.executable, **pybind11_folder()}
        if not (build / "CMakeCache.txt").exists():
            options |= {"CMAKE_BUILD_TYPE": "Release", "FINITES_SOLVER": "OFF", "FINITES_TESTS": "OFF",
                        "FINITES_BENCH": "OFF", "FINITES_WERROR": os.environ.get("FINITES_WERROR", "OFF")}
        generator = ["-G", "Ninja"] if shutil.which("ninja") and "CMAKE_BUILD_TYPE" in options else []
        subprocess.run(["cmake", "-S", str(ROOT), "-B", str(build), *generator,
                        *(f"-D{name}={value}" for name, value in options.items())], check=True)
        jobs = str(min(os.cpu_count() or 1, 8))
        subprocess.run(["cmake", "--build", str(build), "--target", "_finites", "-j", jobs], check=True)
        target = Path(self.get_ext_fullpath(ext.name)).resolve().parent
        target.mkdir(parents=True, exist_ok=True)
        for file in (build / "python_files.txt").read_text().split("\n"):
            if file:
                shutil.copy(file, target / Path(file).name)


def pybind11_folder():
    """Where CMake finds pybind11, as the package of Python says."""
    try:
        import pybind11
    except ImportError:
        return {}
    return {"CMAKE_PREFIX_PATH": pybind11.get_cmake_dir()}


setup(version=version(), ext_modules=[Extension("finites._finites", sources=[])], cmdclass={"build_ext": CMakeBuild})
