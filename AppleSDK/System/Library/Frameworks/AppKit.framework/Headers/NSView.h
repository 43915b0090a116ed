// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/NSAccessibilityProtocols.h>
#import <AppKit/NSGraphics.h>
#import <AppKit/NSResponder.h>

NS_ASSUME_NONNULL_BEGIN

@class NSScrollView;

typedef NS_OPTIONS(NSUInteger, NSAutoresizingMaskOptions) { NSViewNotSizable = 0, NSViewMinXMargin = 1, NSViewWidthSizable = 2, NSViewMaxXMargin = 4, NSViewMinYMargin = 8, NSViewHeightSizable = 16, NSViewMaxYMargin = 32 };

@interface NSView : NSResponder <NSAccessibility>
- (instancetype)initWithFrame:(NSRect)frame NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder *)coder NS_DESIGNATED_INITIALIZER;
@property (nullable, readonly, assign) NSWindow *window;
@property (nullable, readonly, assign) NSView *superview;
@property (getter=isHidden) BOOL hidden;
@property (copy) NSArray<__kindof NSView *> *subviews;
- (void)addSubview:(NSView *)view;
- (void)removeFromSuperview;
@property NSAutoresizingMaskOptions autoresizingMask;
- (void)setFrameOrigin:(NSPoint)origin;
- (void)setBoundsOrigin:(NSPoint)origin;
- (void)setFrameSize:(NSSize)size;
@property NSRect frame;
@property NSRect bounds;
@property (readonly, getter=isFlipped) BOOL flipped;
@property BOOL needsDisplay;
- (void)display;
- (void)lockFocus API_DEPRECATED("", macos(10.0, 10.14));
- (void)unlockFocus API_DEPRECATED("", macos(10.0, 10.14));
- (void)drawRect:(NSRect)dirtyRect;
- (nullable NSView *)hitTest:(NSPoint)point;
- (NSRect)convertRect:(NSRect)rect toView:(nullable NSView *)view;
@property (nullable, readonly, assign) NSScrollView *enclosingScrollView;
- (BOOL)scrollRectToVisible:(NSRect)rect;
@property (nullable, assign) NSView *nextKeyView;
@property (nullable, readonly, assign) NSView *nextValidKeyView;
@property (nullable, readonly, assign) NSView *previousValidKeyView;
@property NSFocusRingType focusRingType;
@end

NS_ASSUME_NONNULL_END
