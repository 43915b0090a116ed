// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/AppKitDefines.h>

NS_ASSUME_NONNULL_BEGIN

extern "C" {
extern NSAttributedStringKey const NSForegroundColorAttributeName API_AVAILABLE(macos(10.0));
extern NSAttributedStringKey const NSParagraphStyleAttributeName API_AVAILABLE(macos(10.0));
}

NS_ASSUME_NONNULL_END
