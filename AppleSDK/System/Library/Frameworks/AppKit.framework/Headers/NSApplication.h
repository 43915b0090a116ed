// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/NSResponder.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSInteger NSModalResponse;

static const NSModalResponse NSModalResponseStop = -1000;
static const NSModalResponse NSModalResponseAbort = -1001;
enum { NSRunStoppedResponse API_DEPRECATED_WITH_REPLACEMENT("NSModalResponseStop", macos(10.0, 10.10)) = -1000 };
enum { NSRunAbortedResponse API_DEPRECATED_WITH_REPLACEMENT("NSModalResponseAbort", macos(10.0, 10.10)) = -1001 };

typedef NS_ENUM(NSUInteger, NSRequestUserAttentionType) { NSCriticalRequest = 0, NSInformationalRequest = 10 };

@protocol NSApplicationDelegate <NSObject>
@end

@interface NSApplication : NSResponder
@property (class, readonly, strong) __kindof NSApplication *sharedApplication;
@property (readonly, copy) NSArray<NSWindow *> *windows;
@property (nullable, assign) id<NSApplicationDelegate> delegate;
- (void)run;
- (void)sendEvent:(NSEvent *)event;
- (NSModalResponse)runModalForWindow:(NSWindow *)window;
- (void)stopModal;
@property (nullable, readonly, assign) NSWindow *modalWindow;
- (NSInteger)requestUserAttention:(NSRequestUserAttentionType)type;
- (BOOL)sendAction:(SEL)action to:(nullable id)target from:(nullable id)sender;
@end

extern "C" {
extern __kindof NSApplication *_Null_unspecified NSApp;
extern NSRunLoopMode NSModalPanelRunLoopMode;
extern NSRunLoopMode NSEventTrackingRunLoopMode;
BOOL NSApplicationLoad(void);
}

NS_ASSUME_NONNULL_END
