#include "Preset.h"

#include <libxml/parser.h>
#include <libxml/xpath.h>
#include <openssl/evp.h>

#include <array>
#include <charconv>
#include <memory>

namespace orvane_host {

namespace {

struct DocumentDeleter {
  void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
using Document = std::unique_ptr<xmlDoc, DocumentDeleter>;

// The file's parameters, found by their identifiers. Messages of the exceptions are only the reason; ReadPreset adds
// the file.
class Parameters {
 public:
  explicit Parameters(xmlDoc* document) : context_(xmlXPathNewContext(document), xmlXPathFreeContext) {}

  // The text of the one element that the path leads to.
  std::string At(const std::string& path) const {
    const std::unique_ptr<xmlXPathObject, void (*)(xmlXPathObject*)> found(
        xmlXPathEvalExpression(BAD_CAST path.c_str(), context_.get()), xmlXPathFreeObject);
    if (!found || !found->nodesetval || found->nodesetval->nodeNr != 1) throw PresetError("it has not one " + path);
    const std::unique_ptr<xmlChar, void (*)(void*)> text(xmlNodeGetContent(found->nodesetval->nodeTab[0]), xmlFree);
    return reinterpret_cast<const char*>(text.get());
  }

  std::string Text(const std::string& identifier, const std::string& element = "ParamValue") const {
    return At("//ExporterParam[ParamIdentifier='" + identifier + "']/" + element);
  }

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
  std::unique_ptr<xmlXPathContext, void (*)(xmlXPathContext*)> context_;
};

constexpr int FourCc(const char (&code)[5]) {
  return static_cast<int>(static_cast<unsigned>(code[0]) << 24 | static_cast<unsigned>(code[1]) << 16 |
                          static_cast<unsigned>(code[2]) << 8 | static_cast<unsigned>(code[3]));
}

void RequireCode(const Parameters& parameters, const char* identifier, int code, const char* meaning) {
  if (parameters.Number<int>(identifier, INT32_MIN, INT32_MAX) != code) {
    throw PresetError(std::string(identifier) + " is not " + meaning + ", which is all that this host encodes");
  }
}

// The mask of the settings that follow the sequence: four bytes, the lowest first, of which the first is used.
unsigned MatchMask(const Parameters& parameters) {
  const std::string data = parameters.Text("ADBEVideoMatchSource", "ParamArbData");
  std::array<unsigned char, 6> bytes{};
  if (data.size() != 8 || EVP_DecodeBlock(bytes.data(), reinterpret_cast<const unsigned char*>(data.data()), 8) != 6) {
    throw PresetError("ADBEVideoMatchSource is not four bytes in base64: \"" + data + "\"");
  }
  return bytes[0];
}

constexpr unsigned kMatchSize = 1U << 0;
constexpr unsigned kMatchRate = 1U << 2;

void ReadVideo(const Parameters& parameters, Preset& preset) {
  RequireCode(parameters, "ADBEVideoCodec", FourCc("avc1"), "H.264");
  const unsigned mask = MatchMask(parameters);
  preset.follow_size = mask & kMatchSize;
  preset.follow_rate = mask & kMatchRate;
  preset.width = parameters.Number<int>("ADBEVideoWidth", 16, 8192);
  preset.height = parameters.Number<int>("ADBEVideoHeight", 16, 8192);
  if (preset.width % 2 != 0 || preset.height % 2 != 0) throw PresetError("the frame's sides must be even");
  // From 240 frames a second to one.
  preset.ticks_per_frame = parameters.Number<std::int64_t>("ADBEVideoFPS", 254016000000 / 240, 254016000000);
  const int profile = parameters.Number<int>("ADBEVideoMPEGProfile", 1, 3);
  if (profile == 2) throw PresetError("ADBEVideoMPEGProfile is out of range: 2");
  preset.profile = static_cast<Preset::Profile>(profile);
  preset.level = parameters.Number<int>("ADBEVideoMPEGProfileLevel", 10, 62);
  const int mode = parameters.Number<int>("ADBEVideoBitrateEncoding", 0, 2);
  if (mode == 2) throw PresetError("it asks for two passes, and this host encodes in one");
  preset.bitrate_mode = static_cast<Preset::BitrateMode>(mode);
  preset.target_mbit = parameters.Number<double>("ADBEVideoTargetBitrate", 0.01, 1000);
  preset.maximum_mbit = parameters.Number<double>("ADBEVideoMaxBitrate", preset.target_mbit, 1000);
  preset.keyframe_distance = parameters.Number<int>("ADBEMPEGKeyframeRate", 0, 1000);
}

void ReadAudio(const Parameters& parameters, Preset& preset) {
  RequireCode(parameters, "ADBEAudioCodec", FourCc("AAC "), "AAC");
  preset.audio_rate = parameters.Number<int>("ADBEAudioRatePerSecond", 8000, 96000);
  preset.audio_channels = parameters.Number<int>("ADBEAudioNumChannels", 1, 2);
  preset.audio_kbit = parameters.Number<int>("ADBEAudioBitrate", 16, 512);
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
    const Parameters parameters(document.get());
    Preset preset;
    preset.name = parameters.At("/PremiereData/PresetName");
    RequireCode(parameters, "ADBEMPEGMultiplexer", FourCc("MP4 "), "MPEG-4");
    ReadVideo(parameters, preset);
    ReadAudio(parameters, preset);
    return preset;
  } catch (const PresetError& error) {
    throw PresetError("the preset " + path + " is damaged or beyond this host: " + error.what());
  }
}

}  // namespace orvane_host
