"""The payload tree: what lies where, images, presets, the property list, versions."""

import plistlib
import re
import struct
from xml.parsers.expat import ExpatError

import build
import interface_files
from build import PAYLOAD, ROOT

# Where the host and the plug-in look. Written out here, so that a slip in the build's own variables shows.
FOLDER = PAYLOAD / "Library/Application Support/Adobe/Common/Plug-ins/7.0/MediaCore/OrvaneVorrel"
CONTENTS = FOLDER / "Orvane.bundle/Contents"
EXECUTABLE = CONTENTS / "MacOS/Orvane"
RESOURCES = CONTENTS / "Resources"
IMAGES = ROOT / "Mac/Resources/Images"


def files_below(folder):
    return {str(path.relative_to(folder)) for path in folder.rglob("*") if not path.is_dir()}


def png_size(path):
    """Width and height in pixels, or None when the file is no PNG."""
    with open(path, "rb") as file:
        head = file.read(24)
    return struct.unpack(">II", head[16:24]) if head.startswith(b"\x89PNG\r\n\x1a\n") and len(head) == 24 else None


def pair_faults(folder):
    faults = []
    for path in sorted(folder.glob("*.png")):
        double = path.with_name(f"{path.stem}@2x.png")
        if path.stem.endswith("@2x"):
            if not path.with_name(path.name.replace("@2x", "")).exists():
                faults.append(f"{path.name} is the double of no image")
        elif not double.exists():
            faults.append(f"{path.name} has no double")
        elif not png_size(path) or png_size(double) != tuple(2 * side for side in png_size(path)):
            faults.append(f"{path.name} is {png_size(path)}, its double {png_size(double)}")
    return faults


def named_images():
    """The images that sources name in full; one that starts with "_" or "." is the end of a composed name."""
    return {name for path in (ROOT / "Mac").rglob("*.mm") for name in re.findall(r'"(\w[\w@]*\.png)"', path.read_text())
            if not name.startswith("_")}


def read_property_list():
    try:
        with open(CONTENTS / "Info.plist", "rb") as file:
            return plistlib.load(file)
    except (OSError, ExpatError, plistlib.InvalidFileException):
        return {}


def check_files(report):
    bundle = {"Contents/Info.plist", "Contents/MacOS/Orvane"}
    bundle |= {f"Contents/Resources/{name}.xib" for name in interface_files.NAMES}
    bundle |= {f"Contents/Resources/{path.name}" for path in IMAGES.glob("*.png")}
    presets = build.configured("ORVANE_PRESET_FILES").split(";")
    expected = {f"Orvane.bundle/{name}" for name in bundle} | set(presets)
    report.same(f"the payload is {len(expected)} files, each in its place",
                files_below(PAYLOAD), frozenset(f"{FOLDER.relative_to(PAYLOAD)}/{name}" for name in expected))
    faults = [fault for name in presets if (FOLDER / name).exists() for fault in build.xml_faults(FOLDER / name)]
    report.none("the presets are XML", faults)


def check_images(report):
    count = len(list(RESOURCES.glob("*@2x.png")))
    report.none(f"images: each of {count} has a double of twice its width and height", pair_faults(RESOURCES))
    report.none("images: each that a source names is there",
                [f"missing: {name}" for name in sorted(named_images()) if not (RESOURCES / name).exists()])


def check_property_list(report):
    properties = read_property_list()
    report.none("Info.plist is XML", build.xml_faults(CONTENTS / "Info.plist"))
    expected = {"CFBundleExecutable": EXECUTABLE.name, "CFBundlePackageType": "BNDL",
                "CFBundleIdentifier": build.configured("ORVANE_BUNDLE_IDENTIFIER"),
                "LSMinimumSystemVersion": build.configured("CMAKE_OSX_DEPLOYMENT_TARGET")}
    report.none(f"Info.plist holds {', '.join(expected)}",
                [f"{key} is {properties.get(key)}, not {value}" for key, value in expected.items()
                 if properties.get(key) != value])
    report.none("Info.plist has no variable left",
                [f"{key}: {value}" for key, value in properties.items() if re.search(r"[@$]", str(value))])


def check_versions(report):
    properties = read_property_list()
    changes = re.search(r"^## (\S+)", (ROOT / "CHANGELOG.md").read_text(), re.MULTILINE)
    sources = re.search(r'ORVANE_VERSION "(.*)"', (build.BUILD / "generated/Deployment.h").read_text())
    version = build.configured("CMAKE_PROJECT_VERSION")
    found = {"CFBundleShortVersionString": properties.get("CFBundleShortVersionString"),
             "CFBundleVersion": properties.get("CFBundleVersion"),
             "ORVANE_VERSION": sources and sources[1], "CHANGELOG.md": changes and changes[1]}
    report.none(f"one version everywhere: {version}",
                [f"{name} has {value}" for name, value in found.items() if value != version])
