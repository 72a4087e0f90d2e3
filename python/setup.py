"""Builds the wheel: the module by CMake, the library with it.

ZOR4DATA_BUILD names a folder where the module has been built (``build/dev``); without it everything is built below
``build/python`` of the source tree. Nothing is written beside the sources but, without ``--outdir``, the wheel.
"""

from __future__ import annotations

import os
import shutil
import subprocess
import sys
import sysconfig
from pathlib import Path

from setuptools import Distribution, Extension, setup
from setuptools.command.build_ext import build_ext

ROOT = Path(__file__).resolve().parent.parent
READY = os.environ.get("ZOR4DATA_BUILD")
WORK = Path(READY).resolve() / "python" / "wheel" if READY else ROOT / "build" / "python"
COMPONENT = "zor4data_python"


def run(*command: str | os.PathLike[str]) -> None:
    """Run a program; its failure is ours."""
    print("setup:", *command, flush=True)
    subprocess.run([os.fspath(part) for part in command], check=True)


def configure(build: Path) -> None:
    """Configure a build of the library and the module alone, for the interpreter that runs this."""
    run(
        "cmake", "-S", ROOT, "-B", build, "-G", "Ninja",
        "-DCMAKE_BUILD_TYPE=Release", "-DZOR4DATA_BUILD_HOST=OFF", "-DZOR4DATA_BUILD_TESTS=OFF",
        "-DZOR4DATA_BUILD_PYTHON=ON", f"-DZOR4DATA_PYTHON={sys.executable}",
    )  # fmt: skip


class CMakeBuild(build_ext):
    """Has CMake build and install what the package holds besides its Python files."""

    def build_extension(self, ext: Extension) -> None:
        build = Path(READY).resolve() if READY else WORK / "cmake"
        if not READY:
            configure(build)
        run("cmake", "--build", build, "--target", COMPONENT)
        place = Path(self.build_lib).resolve()
        run("cmake", "--install", build, "--component", COMPONENT, "--prefix", place, "--strip")
        package = place / "zor4data"
        for link in package.iterdir():  # a wheel knows no links: the name that is asked for is the file
            if link.is_symlink():
                link.resolve().replace(link)
        suffix = sysconfig.get_config_var("EXT_SUFFIX")
        if not (package / f"_core{suffix}").is_file():
            raise SystemExit(f"setup: {build} was not built for {sys.executable}: there is no _core{suffix}")


class BinaryDistribution(Distribution):
    """Has a module, which belongs to one Python and one machine."""

    def has_ext_modules(self) -> bool:
        return True


shutil.rmtree(WORK / "lib", ignore_errors=True)  # what the package no longer has would go into the wheel
for folder in ("lib", "egg"):
    (WORK / folder).mkdir(parents=True, exist_ok=True)
setup(
    distclass=BinaryDistribution,
    ext_modules=[Extension("zor4data._core", sources=[])],
    cmdclass={"build_ext": CMakeBuild},
    options={"build": {"build_base": str(WORK / "lib")}, "egg_info": {"egg_base": str(WORK / "egg")}},
)
