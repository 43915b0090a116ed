"""The payload tree: what lies where, images, presets, the property list, versions."""

import plistlib
import re
from xml.parsers.expat import ExpatError

import build
import interface_files
from build import PAYLOAD, ROOT

# Where the host and the plug-in look. Written out here, so that a slip in the build's own variables shows.
FOLDER = PAYLOAD / "Library/Application Support/Adobe/Common/Plug-ins/7.0/MediaCore/OrvaneVorrel"
CONTENTS = FOLDER / "Orvane.bundle/Contents"
EXECUTABLE = CONTENTS / "MacOS/Orvane"
IMAGES = ROOT / "Mac/Resources/Images"


def files_below(folder):
    return {str(path.relative_to(folder)) for path in folder.rglob("*") if not path.is_dir()}


def read_property_list():
    try:
        with open(CONTENTS / "Info.plist", "rb") as file:
            return plistlib.load(file)
    except (OSError, ExpatError, plistlib.InvalidFileException):
        return {}


def check_files(report):
    bundle = {"Contents/Info.plist", "Contents/MacOS/Orvane"}
    bundle |= {f"Contents/Resources/{name}.nib" for name in interface_files.NAMES}
    bundle |= {f"Contents/Resources/{path.name}" for path in IMAGES.glob("*.png")}
    presets = build.configured("ORVANE_PRESET_FILES").split(";")
    expected = {f"Orvane.bundle/{name}" for name in bundle} | set(presets)
    report.same(f"the payload is {len(expected)} files, each in its place",
                files_below(PAYLOAD), frozenset(f"{FOLDER.relative_to(PAYLOAD)}/{name}" for name in expected))
    faults = [fault for name in presets if (FOLDER / name).exists() for fault in build.xml_faults(FOLDER / name)]
    report.none("the presets are XML", faults)
    report.none("no file tells where it was built",
                [path.name for path in PAYLOAD.rglob("*") if path.is_file() and bytes(ROOT) in path.read_bytes()])


def check_property_list(report):
    properties = read_property_list()
    report.none("Info.plist is XML", build.xml_faults(CONTENTS / "Info.plist"))
    expected = {"CFBundleExecutable": EXECUTABLE.name, "CFBundlePackageType": "BNDL",
                "CFBundleIdentifier": build.configured("ORVANE_BUNDLE_IDENTIFIER"),
                "LSMinimumSystemVersion": build.OLDEST_SYSTEM}
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
