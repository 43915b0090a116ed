// The page that scrolls when the chips need more room than the window has.
#pragma once

#import <Cocoa/Cocoa.h>

#include "RuntimeName.h"

/// The document of a scroll view, with the tags view at its top. It is as high as the chips need, and never lower than
/// the part that is visible; its width stays. [main-thread]
ORV_RUNTIME_NAME("OrvTagsPage")
@interface TagsPage : NSView

/// Makes room for the views, which stand anywhere within it.
- (void)fitToViews:(NSArray *)views;

@end
