"""Since when macOS has what AppleSDK/ declares: each declaration says so, or is in the list of the older ones."""

import json
import pathlib
import subprocess

from build import BUILD, LLVM, ROOT

SDK = ROOT / "AppleSDK"
OLDER = SDK / "older.txt"
# What has to be there when the program runs. A type alone does not, and neither does a macro.
KINDS = ("class", "protocol", "method", "type.method", "property", "type.property", "func", "var", "enum.case")


def undated(symbol):
    """Whether a declaration does not say since when it is there."""
    dated = any(platform["domain"] == "macos" for platform in symbol.get("availability", []))
    return not dated and symbol["kind"]["identifier"].partition(".")[2] in KINDS


def listed_name(symbol):
    """A member's begins with what it belongs to, any other's with its framework."""
    *owner, name = symbol["pathComponents"]
    return f"{owner[0] if owner else pathlib.Path(symbol['location']['uri']).parents[1].stem} {name}"


def undated_declarations():
    headers = [path for folder in ("System", "usr/include/dispatch", "usr/include/objc")
               for path in (SDK / folder).rglob("*.h")]
    graph = BUILD / "declarations.json"
    subprocess.run([LLVM / "bin/clang++", "-extract-api", "-x", "objective-c++-header", "-target", "x86_64-apple-macos",
                    "-isysroot", SDK, "-isystem", SDK / "usr/include/c++/v1", "-idirafter",
                    "/usr/include/x86_64-linux-musl", "-w", "-o", graph, *headers], check=True)
    return {listed_name(symbol) for symbol in json.loads(graph.read_text())["symbols"] if undated(symbol)}


def check_declarations(report):
    lines = [line.split() for line in OLDER.read_text().splitlines() if not line.startswith("#")]
    older = {f"{owner} {name}" for owner, *names in lines for name in names}
    found = undated_declarations()
    report.none("each declaration in AppleSDK/ says since when macOS has it, or is among the older ones",
                [f"neither: {name}" for name in sorted(found - older)] +
                [f"listed, but not there: {name}" for name in sorted(older - found)])
