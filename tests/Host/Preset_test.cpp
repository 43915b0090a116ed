#include "Preset.h"

#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/xpath.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "Deployment.h"

namespace orvane_host {
namespace {

const std::string kFolder = std::string(ORVANE_PRESET_DIR) + "/";

TEST(Preset, TheThreeFilesHoldTheirSettings) {
  const Preset high = ReadPreset(kFolder + ORVANE_HIGH_PRESET);
  const Preset medium = ReadPreset(kFolder + ORVANE_MEDIUM_PRESET);
  const Preset low = ReadPreset(kFolder + ORVANE_LOW_PRESET);
  const auto video = [](const Preset& preset) {
    return std::vector<double>{static_cast<double>(preset.width),
                               static_cast<double>(preset.height),
                               static_cast<double>(preset.profile),
                               static_cast<double>(preset.level),
                               preset.target_mbit,
                               preset.maximum_mbit,
                               static_cast<double>(preset.audio_kbit)};
  };
  EXPECT_EQ(video(high), (std::vector<double>{1920, 1080, 3, 41, 16, 20, 320}));
  EXPECT_EQ(video(medium), (std::vector<double>{1280, 720, 3, 31, 5, 8, 192}));
  EXPECT_EQ(video(low), (std::vector<double>{854, 480, 1, 31, 1.5, 2.5, 128}));
  for (const Preset* preset : {&high, &medium, &low}) {
    EXPECT_TRUE(preset->follow_rate) << preset->name;
    EXPECT_FALSE(preset->follow_size) << preset->name;
    EXPECT_EQ(preset->bitrate_mode, Preset::BitrateMode::kVariable) << preset->name;
    EXPECT_EQ(preset->ticks_per_frame, 10160640000) << preset->name;
    EXPECT_EQ(preset->audio_rate, 48000) << preset->name;
    EXPECT_EQ(preset->audio_channels, 2) << preset->name;
  }
}

// The values of all nodes that the expression finds.
std::vector<std::string> Find(xmlDoc* document, const char* expression) {
  std::vector<std::string> found;
  xmlXPathContext* context = xmlXPathNewContext(document);
  xmlXPathObject* result = xmlXPathEvalExpression(BAD_CAST expression, context);
  for (int i = 0; result && result->nodesetval && i < result->nodesetval->nodeNr; ++i) {
    xmlChar* text = xmlNodeGetContent(result->nodesetval->nodeTab[i]);
    found.emplace_back(reinterpret_cast<char*>(text));
    xmlFree(text);
  }
  xmlXPathFreeObject(result);
  xmlXPathFreeContext(context);
  return found;
}

// The editing application follows the references, so that each must lead to one object and none may be lost.
TEST(Preset, EveryObjectOfTheThreeFilesIsReferredToOnce) {
  std::set<std::string> preset_ids;
  for (const char* name : {ORVANE_HIGH_PRESET, ORVANE_MEDIUM_PRESET, ORVANE_LOW_PRESET}) {
    xmlDoc* document = xmlReadFile((kFolder + name).c_str(), nullptr, XML_PARSE_NONET);
    ASSERT_TRUE(document) << name;
    std::vector<std::string> ids = Find(document, "/PremiereData/*/@ObjectID");
    std::vector<std::string> references = Find(document, "//@ObjectRef");
    std::sort(ids.begin(), ids.end());
    std::sort(references.begin(), references.end());
    EXPECT_EQ(ids, references) << name;
    EXPECT_GT(ids.size(), 40U) << name;
    EXPECT_EQ(std::set<std::string>(ids.begin(), ids.end()).size(), ids.size()) << name;
    for (const std::string& id : Find(document, "//PresetID")) preset_ids.insert(id);
    xmlFreeDoc(document);
  }
  EXPECT_EQ(preset_ids.size(), 3U) << "each preset needs an identifier of its own";
}

}  // namespace
}  // namespace orvane_host
