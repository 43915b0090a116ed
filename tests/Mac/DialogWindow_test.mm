#import "DialogWindow.h"

#include <gtest/gtest.h>

#import "Controls.h"

@interface CloseWitness : NSObject {
 @public
  BOOL allows;
  int asked;
}
@end

@implementation CloseWitness
- (BOOL)windowShouldClose:(id)sender {
  ++asked;
  return allows;
}
@end

// A text that claims to have a marked part, of a length.
@interface ComposingView : NSTextView {
 @public
  NSUInteger composed;
}
@end

@implementation ComposingView
- (BOOL)hasMarkedText {
  return YES;
}
- (NSRange)markedRange {
  return NSMakeRange(0, composed);
}
@end

namespace {

class DialogWindowTest : public testing::Test {
 protected:
  void Open(NSUInteger style) {
    window_ = [[DialogWindow alloc] initWithContentRect:NSMakeRect(100, 100, 200, 100)
                                              styleMask:style
                                                backing:NSBackingStoreBuffered
                                                  defer:NO];
    [window_ setReleasedWhenClosed:NO];
    witness_ = [[CloseWitness alloc] init];
    witness_->allows = YES;
    [window_ setDelegate:static_cast<id>(witness_)];
    [window_ makeKeyAndOrderFront:nil];
  }

  void TearDown() override {
    [window_ setDelegate:nil];
    [window_ close];
    [window_ release];
    [witness_ release];
  }

  DialogWindow *window_ = nil;
  CloseWitness *witness_ = nil;
};

}  // namespace

TEST_F(DialogWindowTest, EscapeClosesItAsItsCloseButtonDoes) {
  Open(NSTitledWindowMask | NSClosableWindowMask);
  witness_->allows = NO;
  window_test::PressKey(window_, @"\033");
  EXPECT_EQ(witness_->asked, 1);
  EXPECT_TRUE([window_ isVisible]);
  witness_->allows = YES;
  window_test::PressKey(window_, @"\033", NSShiftKeyMask);
  window_test::PressKey(window_, @"x");
  EXPECT_EQ(witness_->asked, 1) << "only the plain key closes";
  window_test::PressKey(window_, @"\033");
  EXPECT_FALSE([window_ isVisible]);
}

TEST_F(DialogWindowTest, WithoutACloseButtonItStays) {
  Open(NSTitledWindowMask);
  window_test::PressKey(window_, @"\033");
  EXPECT_TRUE([window_ isVisible]);
  EXPECT_EQ(witness_->asked, 0);
}

TEST_F(DialogWindowTest, AnInputMethodKeepsItsEscape) {
  Open(NSTitledWindowMask | NSClosableWindowMask);
  ComposingView *text = [[[ComposingView alloc] initWithFrame:NSMakeRect(0, 0, 200, 100)] autorelease];
  [[window_ contentView] addSubview:text];
  [window_ makeFirstResponder:text];
  text->composed = 2;
  window_test::PressKey(window_, @"\033");
  EXPECT_TRUE([window_ isVisible]);
  text->composed = 0;
  window_test::PressKey(window_, @"\033");
  EXPECT_FALSE([window_ isVisible]) << "nothing is being composed";
}

TEST_F(DialogWindowTest, WhatGetsTheKeyboardComesIntoView) {
  Open(NSTitledWindowMask);
  for (Class kind in @[ [NSButton class], [NSTextField class] ]) {
    NSControl *control = [[[kind alloc] initWithFrame:NSMakeRect(0, 80, 100, 40)] autorelease];
    NSView *page = [[[NSView alloc] initWithFrame:NSMakeRect(0, 0, 200, 300)] autorelease];
    [page addSubview:control];
    NSScrollView *scroll = [[[NSScrollView alloc] initWithFrame:NSMakeRect(0, 0, 200, 100)] autorelease];
    [scroll setDocumentView:page];
    [[window_ contentView] addSubview:scroll];
    [page scrollPoint:NSZeroPoint];
    ASSERT_EQ(NSHeight([control visibleRect]), 20);
    [window_ makeFirstResponder:control];
    EXPECT_EQ(NSHeight([control visibleRect]), 40) << [[control className] UTF8String];
  }
}

// A host may have no Edit menu, and a Cyrillic layout has its Latin letters in one of the two places alone.
TEST_F(DialogWindowTest, CommandKeysEditTheText) {
  Open(NSTitledWindowMask);
  NSTextField *field = [[[NSTextField alloc] initWithFrame:NSMakeRect(0, 0, 200, 24)] autorelease];
  [[window_ contentView] addSubview:field];
  [field setStringValue:@"title"];
  [window_ makeFirstResponder:field];
  // Asked again and again: the window manager may still be giving the keyboard away from the former test's window.
  ASSERT_TRUE(window_test::SpinUntil([this] {
    [window_ makeKeyWindow];
    return [window_ isKeyWindow];
  }));
  for (NSArray *key in @[ @[ @"a", @"a" ], @[ @"x", @"ч" ], @[ @"v", @"м" ], @[ @"м", @"v" ] ]) {
    NSEvent *event = [NSEvent keyEventWithType:NSKeyDown
                                      location:NSZeroPoint
                                 modifierFlags:NSCommandKeyMask
                                     timestamp:0
                                  windowNumber:[window_ windowNumber]
                                       context:nil
                                    characters:[key objectAtIndex:0]
                   charactersIgnoringModifiers:[key objectAtIndex:1]
                                     isARepeat:NO
                                       keyCode:0];
    EXPECT_TRUE([window_ performKeyEquivalent:event]) << [[key description] UTF8String];
  }
  EXPECT_STREQ([[[field currentEditor] string] UTF8String], "titletitle");
}

// Its controller waits for an answer and would come back to what the close has destroyed.
TEST_F(DialogWindowTest, AtWorkItClosesLater) {
  Open(NSTitledWindowMask | NSClosableWindowMask);
  RunAtWork(window_, [this] {
    RunAtWork(window_, [this] {
      [window_ performClose:nil];
      EXPECT_TRUE([window_ isVisible]);
    });
    EXPECT_TRUE([window_ isVisible]);
  });
  EXPECT_FALSE([window_ isVisible]);
  [window_ orderFront:nil];
  RunAtWork(window_, [] {});
  EXPECT_TRUE([window_ isVisible]);
  bool ran = false;
  RunAtWork(nil, [&ran] { ran = true; });
  EXPECT_TRUE(ran);
}
