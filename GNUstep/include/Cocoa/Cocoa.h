// Cocoa's umbrella header, with what newer AppKits declare and GNUstep's does not.
#pragma once

#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>

#if NO_GNUSTEP
// Macros that GNUstep's headers define whatever is asked of them.
#undef ASSIGN
#undef ASSIGNCOPY
#undef ASSIGNMUTABLECOPY
#undef AUTORELEASE
#undef DESTROY
#undef RELEASE
#undef RETAIN
#undef TEST_AUTORELEASE
#undef TEST_RELEASE
#undef TEST_RETAIN
#undef CREATE_AUTORELEASE_POOL
#undef ENTER_POOL
#undef LEAVE_POOL
#endif

// Names that AppKit uses since macOS 10.12 for constants that GNUstep has under their older names.
#define NSAlertStyleWarning NSWarningAlertStyle
#define NSAlertStyleCritical NSCriticalAlertStyle
#define NSCompositingOperationSourceOver NSCompositeSourceOver
#define NSControlStateValueOn NSOnState
#define NSControlStateValueOff NSOffState
#define NSTextAlignmentLeft NSLeftTextAlignment
#define NSTextAlignmentCenter NSCenterTextAlignment
#define NSEventTypeKeyDown NSKeyDown
#define NSEventModifierFlagShift NSShiftKeyMask
#define NSEventModifierFlagControl NSControlKeyMask
#define NSEventModifierFlagOption NSAlternateKeyMask
#define NSEventModifierFlagCommand NSCommandKeyMask

#ifdef __cplusplus
extern "C" {
#endif

/// Makes sure that the process has an application object. Returns YES. Main thread.
BOOL NSApplicationLoad(void);

/// The version of Foundation; that of macOS 10.9 stands for what GNUstep offers.
extern double NSFoundationVersionNumber;

#ifdef __cplusplus
}
#endif

@interface NSWindow (Appearance)

/// Does nothing: windows have one look.
- (void)setAppearance:(NSAppearance *)appearance;

@end

@interface NSScrollView (FlashScrollers)

/// Does nothing: scrollers that are needed are always to be seen.
- (void)flashScrollers;

@end

@interface NSBundle (ImageForResource)

/// The bundle's image of that file name, autoreleased; nil when there is none.
- (NSImage *)imageForResource:(NSString *)name;

@end

@interface NSView (AccessibilityLabel)

/// What a screen reader says of the view; nil until it is set. Copied. Main thread.
- (NSString *)accessibilityLabel;
- (void)setAccessibilityLabel:(NSString *)label;

@end

@interface NSBundle (TopLevelNibLoading)

/// Loads the interface file of that name with the given owner. On success the file's top-level objects are returned in
/// an autoreleased array, which owns them: the caller retains the array for as long as it needs them.
- (BOOL)loadNibNamed:(NSString *)name owner:(id)owner topLevelObjects:(NSArray **)topLevelObjects;

@end
