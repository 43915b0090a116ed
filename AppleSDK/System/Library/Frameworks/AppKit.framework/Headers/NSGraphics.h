// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/AppKitDefines.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSUInteger, NSCompositingOperation) { NSCompositingOperationSourceOver = 2 };
typedef NS_ENUM(NSUInteger, NSBackingStoreType) { NSBackingStoreBuffered = 2 };
typedef NS_ENUM(NSUInteger, NSFocusRingType) { NSFocusRingTypeDefault = 0, NSFocusRingTypeNone = 1, NSFocusRingTypeExterior = 2 };

extern "C" {
void NSDrawThreePartImage(NSRect frame, NSImage *_Nullable startCap, NSImage *_Nullable centerFill, NSImage *_Nullable endCap, BOOL vertical, NSCompositingOperation op, CGFloat alpha, BOOL flipped) API_AVAILABLE(macos(10.5));
void NSDrawNinePartImage(NSRect frame, NSImage *_Nullable topLeftCorner, NSImage *_Nullable topEdgeFill, NSImage *_Nullable topRightCorner, NSImage *_Nullable leftEdgeFill, NSImage *_Nullable centerFill, NSImage *_Nullable rightEdgeFill, NSImage *_Nullable bottomLeftCorner, NSImage *_Nullable bottomEdgeFill, NSImage *_Nullable bottomRightCorner, NSCompositingOperation op, CGFloat alpha, BOOL flipped) API_AVAILABLE(macos(10.5));
}

NS_ASSUME_NONNULL_END
