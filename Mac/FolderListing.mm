#include "FolderListing.h"

#include <algorithm>

#import "OrderedDictionary.h"
#include "PlatformString.h"
#import "ServiceAnswer.h"

static const NSUInteger kIndentation = 3;

void FolderListing::Add(const std::string &answer) {
  NSString *indentation = [@"" stringByPaddingToLength:kIndentation * path_.size() withString:@" " startingAtIndex:0];
  for (id entry in ListMember(AnswerRoot(answer), @"payload")) {
    NSString *name = TextMember(entry, @"name");
    NSString *identifier = TextMember(entry, @"id");
    if (!name || !identifier) continue;
    if (count_ == kMaxFolders) {
      Omit([NSString stringWithFormat:@"only the first %zu are.", kMaxFolders]);
      return;
    }
    ++count_;
    [folders_ setObject:identifier forKey:[indentation stringByAppendingString:name]];
    if (IntegerMember(entry, @"sub_folders") > 0 && MayEnter(identifier, name)) AddInside(identifier);
  }
}

void FolderListing::AddInside(NSString *folderID) {
  const std::string identifier = ToUtf8(folderID);
  const std::string answer = client_->getSubfolders(ToUtf8(project_), identifier);
  path_.push_back(identifier);
  Add(answer);
  path_.pop_back();
}

bool FolderListing::MayEnter(NSString *folderID, NSString *name) {
  if (std::find(path_.begin(), path_.end(), ToUtf8(folderID)) != path_.end()) {
    Omit([NSString stringWithFormat:@"\"%@\" holds itself.", name]);
    return false;
  }
  if (path_.size() < kMaxDepth) return true;
  Omit([NSString stringWithFormat:@"only %zu levels are.", kMaxDepth]);
  return false;
}

// The first reason counts.
void FolderListing::Omit(NSString *what) {
  if (omission_) return;
  omission_ = [@"Not all folders are listed: " stringByAppendingString:what];
  NSLog(@"#orvanevorrel %@", omission_);
}
