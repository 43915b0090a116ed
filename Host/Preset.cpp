#include "Preset.h"

#include <libxml/parser.h>
#include <openssl/evp.h>

#include <array>
#include <charconv>
#include <map>
#include <memory>
#include <set>

namespace orvane_host {

namespace {

struct DocumentDeleter {
  void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
using Document = std::unique_ptr<xmlDoc, DocumentDeleter>;

bool IsElement(const xmlNode* node, const char* tag) {
  return node->type == XML_ELEMENT_NODE && xmlStrEqual(node->name, BAD_CAST tag);
}

const xmlNode* FindChild(const xmlNode* parent, const char* tag) {
  for (const xmlNode* node = parent->children; node; node = node->next) {
    if (IsElement(node, tag)) return node;
  }
  return nullptr;
}

std::string Take(xmlChar* text) {
  const std::string result = text ? reinterpret_cast<const char*>(text) : "";
  xmlFree(text);
  return result;
}

std::string ChildText(const xmlNode* parent, const char* tag) {
  const xmlNode* child = FindChild(parent, tag);
  return child ? Take(xmlNodeGetContent(child)) : "";
}

std::string Attribute(const xmlNode* node, const char* name) {
  return Take(xmlGetProp(node, BAD_CAST name));
}

// The parameters of a preset by their identifiers, gathered along the references from the root. Messages of the
// exceptions are only the reason; ReadPreset adds the file.
class ParameterTree {
 public:
  explicit ParameterTree(const xmlNode* root) {
    for (const xmlNode* node = root->children; node; node = node->next) {
      const std::string id = node->type == XML_ELEMENT_NODE ? Attribute(node, "ObjectID") : "";
      if (!id.empty() && !objects_.emplace(id, node).second) throw PresetError("two objects have the number " + id);
    }
    const xmlNode* start = FindChild(root, "ExportParamContainer");
    if (!start) throw PresetError("it has no ExportParamContainer");
    AddContainer(Resolve(start));
  }

  std::string Text(const char* identifier) const { return ChildText(Find(identifier), "ParamValue"); }
  std::string Data(const char* identifier) const { return ChildText(Find(identifier), "ParamArbData"); }

  // A number within the two limits.
  template <class T>
  T Number(const char* identifier, T lowest, T highest) const {
    const std::string text = Text(identifier);
    T value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) {
      throw PresetError(std::string(identifier) + " is not a number: \"" + text + "\"");
    }
    if (!(value >= lowest && value <= highest)) {
      throw PresetError(std::string(identifier) + " is out of range: " + text);
    }
    return value;
  }

 private:
  const xmlNode* Resolve(const xmlNode* reference) {
    const std::string id = Attribute(reference, "ObjectRef");
    const auto found = objects_.find(id);
    if (found == objects_.end()) throw PresetError("a reference leads to no object: \"" + id + "\"");
    if (!visited_.insert(id).second) throw PresetError("two references lead to the object " + id);
    return found->second;
  }

  void AddContainer(const xmlNode* container) {
    const xmlNode* items = FindChild(container, "ParamContainerItems");
    if (!items) throw PresetError("a container holds no items");
    for (const xmlNode* item = items->children; item; item = item->next) {
      if (IsElement(item, "ParamContainerItem")) AddParameter(Resolve(item));
    }
  }

  // The depth is bounded by the number of objects, as no object is visited twice; real presets have four levels.
  void AddParameter(const xmlNode* parameter) {
    if (++depth_ > kDeepest) throw PresetError("its groups are nested too deeply");
    parameters_.emplace(ChildText(parameter, "ParamIdentifier"), parameter);
    const xmlNode* children = FindChild(parameter, "ExporterChildParams");
    if (children) AddContainer(Resolve(children));
    --depth_;
  }

  const xmlNode* Find(const char* identifier) const {
    const auto found = parameters_.find(identifier);
    if (found == parameters_.end()) throw PresetError(std::string("it has no ") + identifier);
    return found->second;
  }

  static constexpr int kDeepest = 64;

  std::map<std::string, const xmlNode*> objects_;
  std::map<std::string, const xmlNode*> parameters_;
  std::set<std::string> visited_;
  int depth_ = 0;
};

constexpr int FourCc(const char (&code)[5]) {
  return static_cast<int>(static_cast<unsigned>(code[0]) << 24 | static_cast<unsigned>(code[1]) << 16 |
                          static_cast<unsigned>(code[2]) << 8 | static_cast<unsigned>(code[3]));
}

void RequireCode(const ParameterTree& tree, const char* identifier, int code, const char* meaning) {
  if (tree.Number<int>(identifier, INT32_MIN, INT32_MAX) != code) {
    throw PresetError(std::string(identifier) + " is not " + meaning + ", which is all that this host encodes");
  }
}

// The mask of the settings that follow the sequence: four bytes, the lowest first, of which the first is used.
unsigned MatchMask(const ParameterTree& tree) {
  const std::string data = tree.Data("ADBEVideoMatchSource");
  std::array<unsigned char, 6> bytes{};
  if (data.size() != 8 || EVP_DecodeBlock(bytes.data(), reinterpret_cast<const unsigned char*>(data.data()), 8) != 6) {
    throw PresetError("ADBEVideoMatchSource is not four bytes in base64: \"" + data + "\"");
  }
  return bytes[0];
}

constexpr unsigned kMatchSize = 1U << 0;
constexpr unsigned kMatchRate = 1U << 2;

void ReadVideo(const ParameterTree& tree, Preset& preset) {
  RequireCode(tree, "ADBEVideoCodec", FourCc("avc1"), "H.264");
  const unsigned mask = MatchMask(tree);
  preset.follow_size = mask & kMatchSize;
  preset.follow_rate = mask & kMatchRate;
  preset.width = tree.Number<int>("ADBEVideoWidth", 16, 8192);
  preset.height = tree.Number<int>("ADBEVideoHeight", 16, 8192);
  if (preset.width % 2 != 0 || preset.height % 2 != 0) throw PresetError("the frame's sides must be even");
  // From 240 frames a second to one.
  preset.ticks_per_frame = tree.Number<std::int64_t>("ADBEVideoFPS", 254016000000 / 240, 254016000000);
  const int profile = tree.Number<int>("ADBEVideoMPEGProfile", 1, 3);
  if (profile == 2) throw PresetError("ADBEVideoMPEGProfile is out of range: 2");
  preset.profile = static_cast<Preset::Profile>(profile);
  preset.level = tree.Number<int>("ADBEVideoMPEGProfileLevel", 10, 62);
  const int mode = tree.Number<int>("ADBEVideoBitrateEncoding", 0, 2);
  if (mode == 2) throw PresetError("it asks for two passes, and this host encodes in one");
  preset.bitrate_mode = static_cast<Preset::BitrateMode>(mode);
  preset.target_mbit = tree.Number<double>("ADBEVideoTargetBitrate", 0.01, 1000);
  preset.maximum_mbit = tree.Number<double>("ADBEVideoMaxBitrate", preset.target_mbit, 1000);
  preset.keyframe_distance = tree.Number<int>("ADBEMPEGKeyframeRate", 0, 1000);
}

void ReadAudio(const ParameterTree& tree, Preset& preset) {
  RequireCode(tree, "ADBEAudioCodec", FourCc("AAC "), "AAC");
  preset.audio_rate = tree.Number<int>("ADBEAudioRatePerSecond", 8000, 96000);
  preset.audio_channels = tree.Number<int>("ADBEAudioNumChannels", 1, 2);
  preset.audio_kbit = tree.Number<int>("ADBEAudioBitrate", 16, 512);
}

}  // namespace

Preset ReadPreset(const std::string& path) {
  const Document document(
      xmlReadFile(path.c_str(), nullptr, XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
  if (!document) {
    const xmlError* error = xmlGetLastError();
    const std::string reason = error && error->message ? error->message : "it is not XML";
    throw PresetError("cannot read the preset " + path + ": " + reason.substr(0, reason.find('\n')));
  }
  try {
    const xmlNode* root = xmlDocGetRootElement(document.get());
    if (!root || !IsElement(root, "PremiereData")) throw PresetError("its root is not PremiereData");
    const ParameterTree tree(root);
    Preset preset;
    preset.name = ChildText(root, "PresetName");
    RequireCode(tree, "ADBEMPEGMultiplexer", FourCc("MP4 "), "MPEG-4");
    ReadVideo(tree, preset);
    ReadAudio(tree, preset);
    return preset;
  } catch (const PresetError& error) {
    throw PresetError("the preset " + path + " is damaged or beyond this host: " + error.what());
  }
}

}  // namespace orvane_host
