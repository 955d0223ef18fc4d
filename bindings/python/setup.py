"""Builds jwnls: CMake makes libjwnls with its modules inside, setuptools the extension around it.

JWNLS_BUILD names a CMake build folder of the project that is there already, so that nothing is
compiled twice; without it the library is built beside the extension.
"""

import os
import subprocess
from pathlib import Path

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

HERE = Path(__file__).resolve().parent
PROJECT = HERE.parent.parent


class BuildWithLibrary(build_ext):
    def library(self) -> Path:
        folder = Path(os.environ.get("JWNLS_BUILD") or Path(self.build_temp).resolve() / "libjwnls")
        if not (folder / "CMakeCache.txt").exists():
            off = [f"-DJWNLS_{part}=OFF" for part in ("TESTS", "TOOL", "INSTALL")]
            subprocess.run(["cmake", "-S", str(PROJECT), "-B", str(folder),
                            "-DCMAKE_BUILD_TYPE=Release", *off], check=True)
        subprocess.run(["cmake", "--build", str(folder), "--target", "jwnls_static",
                        "--parallel", str(os.cpu_count() or 1)], check=True)
        return folder / "library" / "libjwnls.a"

    def build_extension(self, extension):
        library = str(self.library())
        extension.extra_objects = [library]
        extension.depends = [*extension.depends, library]
        super().build_extension(extension)


setup(
    cmdclass={"build_ext": BuildWithLibrary},
    ext_modules=[
        Extension(
            "jwnls._jwnls",
            sorted(str(path.relative_to(HERE)) for path in (HERE / "src").glob("*.cpp")),
            depends=[str(path.relative_to(HERE)) for path in (HERE / "src").glob("*.h")],
            include_dirs=[str(PROJECT / "include"), "src"],
            define_macros=[("Py_LIMITED_API", "0x03090000"), ("NDEBUG", None)],
            extra_compile_args=["-std=c++20", "-O2", "-Wall", "-Wextra", "-Wconversion",
                                "-fvisibility=hidden"],
            extra_link_args=["-Wl,--exclude-libs,ALL", "-Wl,-z,nodelete", "-Wl,-z,relro,-z,now"],
            libraries=["cctz", "pthread", "dl"],
            language="c++",
            py_limited_api=True,
        )
    ],
    options={"bdist_wheel": {"py_limited_api": "cp39"}},
)
