#include "FolderTree.h"

#include <algorithm>

namespace bench {

namespace {

constexpr int kWidths[] = {10, 9, 10};
constexpr int kLevels = 3;

// Ids are the places on the way down: "_3_0" is the first folder inside the fourth.
int LevelOf(const std::string& id) {
  return static_cast<int>(std::count(id.begin(), id.end(), '_'));
}

void Collect(const std::string& id, std::vector<std::string>& ids) {
  const int level = LevelOf(id);
  if (level == kLevels) return;
  ids.push_back(id);
  for (int i = 0; i < kWidths[level]; ++i) Collect(id + "_" + std::to_string(i), ids);
}

}  // namespace

std::string FoldersInside(const std::string& id) {
  const int level = LevelOf(id);
  if (level >= kLevels) return "";
  const int inside = level + 1 < kLevels ? kWidths[level + 1] : 0;
  std::string text = R"({"root":{"status":"success","payload":[)";
  for (int i = 0; i < kWidths[level]; ++i) {
    const std::string child = id + "_" + std::to_string(i);
    if (i != 0) text += ",";
    text += R"({"id":")" + child + R"(","name":"Scene)" + child + R"( dailies","sub_folders":)" +
            std::to_string(inside) + "}";
  }
  return text + "]}}";
}

std::vector<std::string> FoldersToAskFor() {
  std::vector<std::string> ids;
  Collect("", ids);
  return ids;
}

}  // namespace bench
