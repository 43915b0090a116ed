// The folders of the project that the listing is measured with: 10 folders with 9 inside each, and 10 inside each of
// those.
#pragma once

#include <string>
#include <vector>

namespace bench {

constexpr int kFolderCount = 10 + 10 * 9 + 10 * 9 * 10;

/// The service's answer to a request for the folders inside a folder; an empty id stands for the project. Empty for an
/// id that does not exist.
std::string FoldersInside(const std::string& id);

/// The ids that a client asks for to see the whole tree, in its depth-first order. The first is empty.
std::vector<std::string> FoldersToAskFor();

}  // namespace bench
