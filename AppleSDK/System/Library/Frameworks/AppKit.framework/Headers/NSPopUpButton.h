// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/NSButton.h>
#import <AppKit/NSMenu.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSPopUpButton : NSButton
@property (nullable, strong) NSMenu *menu;
- (void)removeAllItems;
- (void)selectItemAtIndex:(NSInteger)index;
- (void)selectItemWithTitle:(NSString *)title;
@property (nullable, readonly, copy) NSString *titleOfSelectedItem;
@end

NS_ASSUME_NONNULL_END
