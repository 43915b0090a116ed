"""What the linker made: architectures, symbols, libraries, classes."""

import re

from build import OLDEST_SYSTEM, ROOT, output

ENTRY = "_xExportControllerEntry"
PREFIX = "Orv"


class Class:
    """One class of the executable: its name in the runtime, its superclass's, and its instances' methods."""

    def __init__(self, name):
        self.name = name
        self.superclass = None
        self.methods = set()


def minimum_systems(path):
    facts = output("llvm-readobj", "--macho-version-min", path)
    names = {"aarch64": "arm64"}
    return {names.get(arch, arch): version
            for arch, version in re.findall(r"Arch: (\w+).*?\n  Version: ([\d.]+)", facts, re.DOTALL)}


def exported_symbols(path, arch):
    trie = output("llvm-objdump", "--macho", f"--arch={arch}", "--exports-trie", path)
    return re.findall(r"^0x[0-9A-F]+\s+(\S+)", trie, re.MULTILINE)


def undefined_symbols(path, arch):
    return set(output("llvm-nm", "--undefined-only", "--just-symbol-name", f"--arch={arch}", path).split())


def libraries(path, arch):
    lines = output("llvm-objdump", "--macho", f"--arch={arch}", "--dylibs-used", path).splitlines()
    return [line.split()[0] for line in lines if line.startswith("\t")]


def listed_symbols():
    """The symbols that AppleSDK/ lists for import."""
    symbols = set()
    for path in (ROOT / "AppleSDK").rglob("*.tbd"):
        kind = ""
        for line in path.read_text().splitlines():
            if line.startswith("    "):
                if line.endswith(":"):
                    kind = line.strip(" :")
                else:
                    symbols |= linker_names(kind, line.strip(" -'"))
    return symbols


def linker_names(kind, name):
    if kind == "objc-classes":
        return {f"_OBJC_CLASS_$_{name}", f"_OBJC_METACLASS_$_{name}"}
    return {f"_OBJC_EHTYPE_$_{name}" if kind == "objc-eh-types" else name}


def classes(path, arch):
    """The classes by name, as the runtime will read them."""
    metadata = output("llvm-objdump", "--macho", f"--arch={arch}", "--objc-meta-data", path)
    class_list = metadata.partition("__objc_classlist) section")[2].partition("Contents of")[0]
    found, current, in_metaclass = {}, None, False
    for line in class_list.splitlines():
        if head := re.match(r"[0-9a-f]+ 0x[0-9a-f]+ _OBJC_CLASS_\$_(\w+)$", line):
            current, in_metaclass = found.setdefault(head[1], Class(head[1])), False
        elif line == "Meta Class":
            in_metaclass = True
        elif not in_metaclass:
            if parent := re.match(r" +superclass 0x[0-9a-f]+ _OBJC_CLASS_\$_(\w+)$", line):
                current.superclass = parent[1]
            elif method := re.search(r" imp -\[\S+ (\S+)\]$", line):
                current.methods.add(method[1])
    return found


def implemented_classes():
    """How many classes the sources implement."""
    return sum(len(re.findall(r"^@implementation \w+$", path.read_text(), re.MULTILINE))
               for path in (ROOT / "Mac").rglob("*.mm"))


def methods_with_inherited(found, name):
    """The methods of the class and of those above it that are ours."""
    methods = set()
    while name in found:
        methods |= found[name].methods
        name = found[name].superclass
    return methods


def check_executable(report, path):
    # There is no macOS before 11 for arm64.
    minimums = {"arm64": "11.0", "x86_64": OLDEST_SYSTEM}
    report.same(f"architectures and their minimum systems: {minimums}", minimum_systems(path), minimums)
    listed = listed_symbols()
    for arch in minimums:
        report.same(f"{arch}: one exported symbol, {ENTRY}", exported_symbols(path, arch), [ENTRY])
        undefined = undefined_symbols(path, arch)
        report.none(f"{arch}: {len(undefined)} undefined symbols, each listed in AppleSDK/",
                    [f"not listed: {name}" for name in sorted(undefined - listed)])
        strange = [name for name in libraries(path, arch) if not name.startswith(("/usr/lib/", "/System/"))]
        report.none(f"{arch}: no library that is not the system's", strange)
        names = classes(path, arch)
        report.same(f"{arch}: all classes of the sources are there", len(names), implemented_classes())
        report.none(f"{arch}: each class has the prefix {PREFIX} in the runtime",
                    [f"without: {name}" for name in sorted(names) if not name.startswith(PREFIX)])
