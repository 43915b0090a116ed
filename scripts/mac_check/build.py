"""Building for macOS here, and putting the product into a payload tree as an installer would."""

import os
import pathlib
import shutil
import subprocess
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
BUILD = ROOT / "build" / "macos-cross"
PAYLOAD = BUILD / "payload"
LLVM = pathlib.Path("/usr/lib/llvm-19")
# Written out here, so that a slip in the build's own variables shows.
OLDEST_SYSTEM = "10.13"
CURL_RELEASES = pathlib.Path("/usr/share/man/man3/libcurl-symbols.3.gz")

# By what a package is seen to be there.
PACKAGES = {"clang-19": LLVM / "bin/clang++", "lld-19": LLVM / "bin/ld64.lld", "llvm-19": LLVM / "bin/llvm-lipo",
            "libc++-19-dev": LLVM / "include/c++/v1", "libc++abi-19-dev": LLVM / "include/c++/v1/cxxabi.h",
            "musl-dev": pathlib.Path("/usr/include/x86_64-linux-musl"),
            "googletest": pathlib.Path("/usr/src/googletest/googletest/include"),
            "libcurl4-openssl-dev": pathlib.Path("/usr/include/x86_64-linux-gnu/curl"), "libcurl4-doc": CURL_RELEASES,
            "cmake": pathlib.Path("/usr/bin/cmake"), "ninja-build": pathlib.Path("/usr/bin/ninja"),
            "libxml2-utils": pathlib.Path("/usr/bin/xmllint")}


def missing_packages():
    return [name for name, path in PACKAGES.items() if not path.exists()]


def build():
    """Whether everything compiled and linked. What did not is on standard error."""
    # What the build no longer makes must not be left from an earlier one.
    shutil.rmtree(BUILD / "Mac" / "Orvane.bundle", ignore_errors=True)
    # clang leaves an empty folder for each source that it compiles for two architectures.
    with tempfile.TemporaryDirectory() as scratch:
        environment = {**os.environ, "TMPDIR": scratch}
        return subprocess.run([ROOT / "scripts/build", "macos-cross"], env=environment, check=False).returncode == 0


def stage():
    """The payload tree, made anew. Returns whether that succeeded."""
    shutil.rmtree(PAYLOAD, ignore_errors=True)
    done = subprocess.run(["cmake", "--install", BUILD], env={**os.environ, "DESTDIR": str(PAYLOAD)}, check=False,
                          stdout=subprocess.DEVNULL)
    executable = next(PAYLOAD.glob("**/MacOS/*"), None)
    if done.returncode != 0 or not executable:
        return False
    output("llvm-strip", "-S", executable)  # as packing does
    return True


def configured(variable):
    done = subprocess.run([ROOT / "scripts/configured", BUILD, variable], capture_output=True, text=True, check=True)
    return done.stdout.strip()


def output(tool, *words):
    """What one of LLVM's tools prints."""
    return subprocess.run([LLVM / "bin" / tool, *words], capture_output=True, text=True, check=True).stdout


def xml_faults(path):
    done = subprocess.run(["xmllint", "--noout", path], capture_output=True, text=True, check=False)
    return [] if done.returncode == 0 else done.stderr.splitlines()[:1] or [f"{path.name} is no XML"]
