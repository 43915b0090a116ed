#!/usr/bin/env python3
"""Writes the encoding presets that are installed beside the plug-in.

Usage: make_presets.py FILE...

The arguments are the files to write, one for each of PRESETS. The host's preset format is a flat list of numbered objects that refer to each
other, some three hundred lines for each file, in which they differ by a dozen values. They are told here once, as
a tree.
"""
import sys
import xml.etree.ElementTree as ElementTree
from collections import namedtuple

Preset = namedtuple(
    "Preset",
    "name comment preset_id width height profile level target_mbit max_mbit min_mbit audio_kbit")

# The numbers of the profiles are the exporter's; levels are ten times the level.
MAIN_PROFILE, HIGH_PROFILE = 1, 3

PRESETS = [
    Preset("Orvane High", "1080p for review, for sequences of 1920 pixels and more",
           "b9a04ffd-6a30-467f-a74c-d5192f69d600", 1920, 1080, HIGH_PROFILE, 41, 16.0, 20.0, 4.0, 320),
    Preset("Orvane Medium", "720p for review, for sequences of 1280 pixels and more",
           "ddabdeb1-c967-4e61-938a-f1a123c19aff", 1280, 720, HIGH_PROFILE, 31, 5.0, 8.0, 1.25, 192),
    Preset("Orvane Low", "480p for review, for smaller sequences",
           "01a29168-8183-4eb7-8342-9b3c98abc89a", 854, 480, MAIN_PROFILE, 31, 1.5, 2.5, 0.375, 128),
]

TICKS_PER_SECOND = 254016000000
BOOL, INT, FLOAT, TICKS, BUTTON, GROUP, BINARY, MULTIGROUP, RATIO = 1, 2, 3, 4, 7, 8, 9, 10, 11
PLAIN_CLASS = "9f049ab7-d48f-43e9-a8ca-4d7f21233625"
SWITCH_CLASS = "d0f6b8af-8ddb-4381-acf8-3e817480d07d"
CLASS_OF_TYPE = {
    INT: PLAIN_CLASS, GROUP: PLAIN_CLASS, MULTIGROUP: PLAIN_CLASS,
    BOOL: SWITCH_CLASS, BUTTON: SWITCH_CLASS,
    FLOAT: "018cf63d-c58d-4d39-97df-36b6b2d6ef88",
    TICKS: "8def7863-204e-4206-8791-54a78f15c66b",
    RATIO: "8d9836e8-d00a-4a00-bfc0-dfbb73540736",
    BINARY: "b93e10ab-6079-493d-a2b4-c7feb4a510b0",
}
CONTAINER_CLASS = "5c20a4a5-5e7c-4032-85b8-26ad4531fe7b"

# "Follow the sequence's frame rate and nothing else", with the checksum that the host computes for it.
MATCH_RATE, MATCH_RATE_CHECKSUM = "BAAAAA==", "2492304781"


def four_cc(text):
    return int.from_bytes(text.encode("ascii"), "big")


class Param:
    """One parameter: a value, or a group with children."""

    def __init__(self, identifier, kind, value="0", children=None, disabled=False, slider=False):
        self.identifier = identifier
        self.kind = kind
        self.value = value
        self.children = children
        self.disabled = disabled
        self.slider = slider


def group(identifier, *children, kind=GROUP):
    return Param(identifier, kind, children=list(children))


def number(identifier, value):
    return Param(identifier, INT, str(value))


def decimal(identifier, value):
    """The host writes whole numbers with a bare point: 16."""
    text = "%g" % value
    return Param(identifier, FLOAT, text if "." in text else text + ".", slider=True)


def video_tab(preset):
    return group(
        "ADBEVideoTabGroup",
        group("ADBEVideoCodecGroup", number("ADBEVideoCodec", four_cc("avc1"))),
        group("ADBEBasicVideoGroup",
              Param("ADBEVideoMatchSource", BINARY, MATCH_RATE),
              number("ADBEVideoWidth", preset.width),
              number("ADBEVideoHeight", preset.height),
              Param("ADBEVideoFPS", TICKS, str(TICKS_PER_SECOND // 25), disabled=True),
              number("ADBEVideoFieldType", 0),  # progressive
              Param("ADBEVideoAspect", RATIO, "1,1"),
              number("ADBEMPEGTVStandard", 1),  # PAL, as the 25 frames a second above
              number("ADBEVideoMPEGProfile", preset.profile),
              number("ADBEVideoMPEGProfileLevel", preset.level),
              Param("ADBERenderDeepColor", BOOL, "false")),
        group("ADBEVideoBitrateGroup",
              number("ADBEVideoBitrateEncoding", 1),  # variable, one pass
              decimal("ADBEVideoMinBitrate", preset.min_mbit),
              decimal("ADBEVideoTargetBitrate", preset.target_mbit),
              decimal("ADBEVideoMaxBitrate", preset.max_mbit)),
        group("ADBEVideoAdvancedSettingsGroup", number("ADBEMPEGKeyframeRate", 50)))


def audio_tab(preset):
    return group(
        "ADBEAudioTabGroup",
        group("ADBEMPEGAudioFormatGroup", number("ADBEMPEGAudioFormat", four_cc("AAC "))),
        group("ADBEBasicAudioGroup",
              number("ADBEAudioCodec", four_cc("AAC ")),
              number("ADBEAudioRatePerSecond", 48000),
              number("ADBEAudioNumChannels", 2),
              number("ADBEAACAudioQuality", 2)),
        group("ADBEAudioBitrateGroup", number("ADBEAudioBitrate", preset.audio_kbit)))


def multiplexer_tab():
    return group(
        "ADBEMPEGMuxTabGroup",
        group("ADBEMPEGMuxBasicSettingsGroup",
              number("ADBEMPEGMultiplexer", four_cc("MP4 ")),
              number("ADBEMPEGMuxStreamCompatibility", four_cc("STD "))))


def add(parent, tag, text, **attributes):
    element = ElementTree.SubElement(parent, tag, attributes)
    element.text = text
    return element


class ObjectWriter:
    """Writes a tree of parameters as the flat list of numbered objects."""

    def __init__(self, root):
        self.root = root
        self.used_ids = 0

    def container(self, params):
        """Writes a container and all below it; returns its number."""
        self.used_ids += 1
        number_of_container = str(self.used_ids)
        element = add(self.root, "ExporterParamContainer", None, ObjectID=number_of_container,
                      ClassID=CONTAINER_CLASS, Version="1")
        add(element, "ContainedParamsVersion", "1")
        items = add(element, "ParamContainerItems", None, Version="1")
        for index, param in enumerate(params):
            self.used_ids += 1
            add(items, "ParamContainerItem", None, Version="1", Index=str(index), ObjectRef=str(self.used_ids))
            self.param(param, index, str(self.used_ids))
        return number_of_container

    def param(self, param, ordinal, object_id):
        element = add(self.root, "ExporterParam", None, ObjectID=object_id, ClassID=CLASS_OF_TYPE[param.kind],
                      Version="1")
        if param.children is not None:
            add(element, "ExporterChildParams", None, ObjectRef=self.container(param.children))
        add(element, "ParamIdentifier", param.identifier)
        add(element, "ParamType", str(param.kind))
        if param.kind == BINARY:
            add(element, "ParamArbData", param.value, Encoding="base64", Checksum=MATCH_RATE_CHECKSUM)
        else:
            add(element, "ParamValue", param.value)
        add(element, "ParamOrdinalValue", str(ordinal))
        add(element, "ParamAuxType", "0")
        add(element, "ParamAuxValue", "0")
        flags = {"ParamIsDisabled": param.disabled, "ParamIsSlider": param.slider}
        for flag in ("ParamIsHidden", "ParamIsDisabled", "ParamIsSlider", "ParamIsIndependant", "ParamIsPassword",
                     "ParamIsMultiLine", "ParamDontSerializeValue", "IsOptionalParam", "IsOptionalParamEnabled",
                     "IsFilePathString", "IsParamPairGroup", "ParamConstrainedListIsOptional"):
            add(element, flag, "true" if flags.get(flag) else "false")


def document(preset):
    root = ElementTree.Element("PremiereData", Version="3")
    for tag, text in (("PresetName", preset.name), ("PresetComments", preset.comment), ("PresetUserComments", ""),
                      ("PresetID", preset.preset_id), ("ExporterName", ""), ("ExporterClassID", "1313424203"),
                      ("ExporterFileType", "1211250228"), ("DoVideo", "true"), ("DoAudio", "true"),
                      ("DoEmulation", "false"), ("FolderDisplayPath", "Orvane"), ("ExportXMPOptionKey", "10")):
        add(root, tag, text)
    filters = add(root, "StandardFilters", None, Version="1")
    for tag, text in (("DeinterlaceState", "false"), ("CropType", "0"), ("CropRect", "0,0,0,0"),
                      ("CropState", "false")):
        add(filters, tag, text)
    reference = add(root, "ExportParamContainer", None)
    tree = group("0", video_tab(preset), audio_tab(preset), multiplexer_tab(), kind=MULTIGROUP)
    reference.set("ObjectRef", ObjectWriter(root).container([tree]))
    ElementTree.indent(root, "\t")
    return ElementTree.ElementTree(root)


def main():
    files = sys.argv[1:]
    if len(files) != len(PRESETS):
        sys.exit(f"make_presets: {len(PRESETS)} presets for {len(files)} files")
    for preset, file in zip(PRESETS, files):
        document(preset).write(file, encoding="UTF-8", xml_declaration=True, short_empty_elements=True)


if __name__ == "__main__":
    main()
