// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/NSAppearance.h>
#import <AppKit/NSGraphics.h>
#import <AppKit/NSResponder.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSInteger NSWindowLevel;
static const NSWindowLevel NSNormalWindowLevel = 0;
static const NSWindowLevel NSFloatingWindowLevel = 3;

typedef NS_OPTIONS(NSUInteger, NSWindowStyleMask) { NSWindowStyleMaskBorderless = 0, NSWindowStyleMaskTitled = 1 << 0, NSWindowStyleMaskClosable = 1 << 1 };
static const NSWindowStyleMask NSBorderlessWindowMask API_DEPRECATED_WITH_REPLACEMENT("NSWindowStyleMaskBorderless", macos(10.0, 10.12)) = NSWindowStyleMaskBorderless;

@protocol NSWindowDelegate;

@interface NSWindow : NSResponder <NSAppearanceCustomization>
- (instancetype)initWithContentRect:(NSRect)contentRect styleMask:(NSWindowStyleMask)style backing:(NSBackingStoreType)backing defer:(BOOL)flag NS_DESIGNATED_INITIALIZER;
@property (nullable, assign) id<NSWindowDelegate> delegate;
@property (copy) NSString *title;
@property (nullable, strong) __kindof NSView *contentView;
@property (nullable, assign) NSView *initialFirstResponder;
@property (readonly, getter=isVisible) BOOL visible;
@property (readonly) NSInteger windowNumber;
@property (getter=isReleasedWhenClosed) BOOL releasedWhenClosed;
@property NSWindowStyleMask styleMask;
@property NSWindowLevel level;
@property (null_resettable, copy) NSColor *backgroundColor;
@property (readonly) NSRect frame;
- (void)setFrameOrigin:(NSPoint)point;
- (void)setFrame:(NSRect)frame display:(BOOL)flag;
- (NSRect)contentRectForFrameRect:(NSRect)frameRect;
- (NSRect)frameRectForContentRect:(NSRect)contentRect;
- (void)center;
- (void)display;
@property (nullable, readonly, assign) NSResponder *firstResponder;
- (BOOL)makeFirstResponder:(nullable NSResponder *)responder;
- (void)makeKeyAndOrderFront:(nullable id)sender;
- (void)orderOut:(nullable id)sender;
- (void)orderFront:(nullable id)sender;
- (void)close;
- (void)performClose:(nullable id)sender;
- (void)sendEvent:(NSEvent *)event;
@end

@protocol NSWindowDelegate <NSObject>
@optional
- (BOOL)windowShouldClose:(NSWindow *)sender;
- (void)windowWillClose:(NSNotification *)notification;
@end

NS_ASSUME_NONNULL_END
