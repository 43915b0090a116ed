// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/NSButton.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSPopUpButton : NSButton
- (void)addItemsWithTitles:(NSArray<NSString *> *)titles;
- (void)removeAllItems;
- (void)selectItemAtIndex:(NSInteger)index;
- (void)selectItemWithTitle:(NSString *)title;
@property (nullable, readonly, copy) NSString *titleOfSelectedItem;
@end

NS_ASSUME_NONNULL_END
