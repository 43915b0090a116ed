"""usage: check-mac

Builds the plug-in for macOS on this machine (Debian 12), arm64 and x86_64, without a warning, against the declarations
in AppleSDK/; then looks at sources, declarations and the product as an installer would put it down, and prints a line
for each thing that has to be so. It installs nothing. The product is in build/macos-cross/payload afterwards.

The exit status is 0 when everything is so, 1 when something is not, 2 when a package is missing or an argument is
wrong."""

import fcntl
import sys

import build
import declarations
import executable
import interface_files
import payload
import sources
from report import Report

LIMITS = """\
Not proven here: no Mac, no ibtool and no host was run. The declarations in AppleSDK/ are our own, and what compiles
and links is as true as they are. The interface files were held against the classes; a stand-in took the place of their
compiler. Whether windows look right, messages are answered and a signature is accepted, only a Mac shows."""


def look_at_product(report):
    payload.check_files(report)
    payload.check_property_list(report)
    payload.check_versions(report)
    if not payload.EXECUTABLE.exists():
        return
    executable.check_executable(report, payload.EXECUTABLE)
    classes = executable.classes(payload.EXECUTABLE, "x86_64")
    interface_files.check_interface_files(report, classes)


def main():
    if sys.argv[1:] in (["-h"], ["--help"]):
        print(__doc__)
        return 0
    if sys.argv[1:]:
        print("check-mac: it takes no arguments; see scripts/check-mac --help", file=sys.stderr)
        return 2
    if missing := build.missing_packages():
        print(f"check-mac: missing packages, which scripts/install-packages installs: {' '.join(missing)}",
              file=sys.stderr)
        return 2
    build.BUILD.mkdir(parents=True, exist_ok=True)
    with open(build.BUILD / "check-mac.lock", "w", encoding="utf-8") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)  # two runs in one tree would take each other's product away
        report = Report()
        built = build.build()
        sources.check_sources(report)
        declarations.check_declarations(report)
        report.check(built, "every source compiles for arm64 and x86_64 without a warning, and the bundle links")
        if built:
            report.check(build.stage(), "the product installs into a payload tree")
            look_at_product(report)
    print(LIMITS)
    print(f"check-mac: {report.failures} of {report.lines} are not so" if report.failures else
          f"check-mac: all {report.lines} are so")
    return 1 if report.failures else 0


sys.exit(main())
