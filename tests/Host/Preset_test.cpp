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
