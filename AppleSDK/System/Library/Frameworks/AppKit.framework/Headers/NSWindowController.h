// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/NSNibDeclarations.h>
#import <AppKit/NSResponder.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSWindowController : NSResponder
- (instancetype)initWithWindow:(nullable NSWindow *)window NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder *)coder NS_DESIGNATED_INITIALIZER;
@property (nullable, strong) NSWindow *window;
- (IBAction)showWindow:(nullable id)sender;
@end

NS_ASSUME_NONNULL_END
