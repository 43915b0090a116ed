// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/AppKitDefines.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSString *NSNibName;

@interface NSObject (NSNibAwaking)
- (void)awakeFromNib;
@end

@interface NSBundle (NSNibLoading)
- (BOOL)loadNibNamed:(NSNibName)name owner:(nullable id)owner topLevelObjects:(NSArray *_Nullable *_Nullable)objects API_AVAILABLE(macos(10.8));
@end

NS_ASSUME_NONNULL_END
