"""What the sources of the plug-in use that a compiler on Linux lets through and an older Mac, or any, does not have."""

import gzip
import re

from build import CURL_RELEASES, LLVM, ROOT

FRAMEWORKS = ROOT / "AppleSDK/System/Library/Frameworks"
CXX_HEADERS = LLVM / "include/c++/v1"
# Beside the headers of the C++ library and of Apple's frameworks. Linux has many that a Mac lacks.
C_HEADERS = {"assert.h", "curl/curl.h", "dispatch/dispatch.h", "errno.h", "fcntl.h", "objc/runtime.h", "pthread.h",
             "stddef.h", "stdint.h", "stdio.h", "stdlib.h", "string.h", "strings.h", "sys/stat.h", "sys/types.h",
             "time.h", "unistd.h"}
OLDEST_CURL = (7, 54, 0)  # in macOS 10.13
BLOCK = r"\^\s*(?:\([^()]*\)\s*)?\{(?!\s*(?:@autoreleasepool\s*\{\s*)?RunGuarded\()"


def is_on_a_mac(header):
    framework, _, name = header.partition("/")
    return header in C_HEADERS or (FRAMEWORKS / f"{framework}.framework/Headers" / name).is_file() or (
        "." not in header and (CXX_HEADERS / header).is_file())


def curl_releases():
    """Since which release libcurl has each of its names."""
    page = gzip.open(CURL_RELEASES, "rt").read()
    return {name: tuple(map(int, release.split(".")))
            for name, release in re.findall(r"^\.IP (\w+)\nIntroduced in ([\d.]+\d)", page, re.MULTILINE)}


def check_sources(report):
    texts = {path.relative_to(ROOT): path.read_text() for folder in ("Mac", "PremiereSDK")
             for path in (ROOT / folder).rglob("*") if path.suffix in (".h", ".mm", ".cpp")}

    def matches(pattern):
        return [(f"{path}:{text.count(chr(10), 0, match.start()) + 1}", match[match.re.groups])
                for path, text in texts.items() for match in re.finditer(pattern, text, re.MULTILINE)]

    report.none("each system header is one that a Mac has", [
        f"{place}: <{name}>" for place, name in matches(r"^ *# *(?:include|import) *<(.+)>") if not is_on_a_mac(name)])
    releases = curl_releases()
    report.none(f"libcurl has each of its names since {'.'.join(map(str, OLDEST_CURL))} at the latest", [
        f"{place}: {name}, since {releases.get(name, 'no release')}" for place, name in matches(r"\bCURL[A-Z]*_\w+")
        if releases.get(name, (99,)) > OLDEST_CURL])
    report.none("each block begins with RunGuarded", [place for place, _ in matches(BLOCK)])
