// Listing the folders of a project.
#pragma once

#import <Foundation/Foundation.h>

#include <string>
#include <vector>

#include "OrvaneProjectsAPI.h"

@class MutableOrderedDictionary;

/// One walk through a tree of folders, depth first: label to id, each label indented by three spaces for each level.
/// A service whose folders hold themselves or never end cannot hold up the application for good: the walk ends at
/// limits, and what it has listed by then stays. [main-thread]
class FolderListing {
 public:
  /// How deep folders may lie in each other, and how many are listed.
  static constexpr size_t kMaxDepth = 50;
  static constexpr size_t kMaxFolders = 10000;

  /// The client must be logged in; neither it nor the dictionary is owned.
  FolderListing(OrvaneProjectsAPI *client, NSString *projectID, MutableOrderedDictionary *folders)
      : client_(client), project_(projectID), folders_(folders) {}

  /// Adds the folders of a service's answer and, directly below each, its subtree, which is requested.
  void Add(const std::string &answer);

  /// The same for what lies inside of a folder, a level deeper.
  void AddInside(NSString *folderID);

  /// A sentence about what is left out, autoreleased; nil while that is nothing.
  NSString *Omission() const { return omission_; }

 private:
  bool MayEnter(NSString *folderID, NSString *name);
  void Omit(NSString *what);

  OrvaneProjectsAPI *client_;
  NSString *project_;
  MutableOrderedDictionary *folders_;
  std::vector<std::string> path_;  // the ids of the folders around, outermost first
  size_t count_ = 0;
  NSString *omission_ = nil;
};
