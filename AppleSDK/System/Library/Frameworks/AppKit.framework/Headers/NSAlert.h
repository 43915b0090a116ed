// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/NSApplication.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSUInteger, NSAlertStyle) { NSAlertStyleWarning = 0, NSAlertStyleInformational = 1, NSAlertStyleCritical = 2 };

@interface NSAlert : NSObject
@property (copy) NSString *messageText;
@property (copy) NSString *informativeText;
@property (null_resettable, strong) NSImage *icon;
@property NSAlertStyle alertStyle;
- (NSModalResponse)runModal;
@end

@interface NSAlert (NSAlertDeprecated)
- (void)beginSheetModalForWindow:(NSWindow *)window modalDelegate:(nullable id)delegate didEndSelector:(nullable SEL)selector contextInfo:(nullable void *)information API_DEPRECATED("Use -beginSheetModalForWindow:completionHandler: instead", macos(10.3, 10.10));
@end

NS_ASSUME_NONNULL_END
