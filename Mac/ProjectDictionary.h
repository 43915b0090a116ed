// The dictionary of the project chooser.
#pragma once

#import <Foundation/Foundation.h>

#include "RuntimeName.h"

@class MutableOrderedDictionary;

/// A mutable dictionary like any other whose keys come in the order in which they were added: the chooser shows them as
/// they come, and a hash would put any project first. Made by init, and filled then.
ORV_RUNTIME_NAME("OrvProjectDictionary")
@interface ProjectDictionary : NSMutableDictionary {
  MutableOrderedDictionary *_entries;
}
@end
