// A window without a frame for the length of a test.
#pragma once

#import <Cocoa/Cocoa.h>

namespace window_test {

/// Opens when it is made and closes when it goes. Main thread.
class BareWindow {
 public:
  /// The size is that of the content.
  explicit BareWindow(NSSize size);
  ~BareWindow();
  BareWindow(const BareWindow &) = delete;
  BareWindow &operator=(const BareWindow &) = delete;

  NSWindow *Window() const { return window_; }

  /// Adds the view with its frame; it leaves the window with it.
  void Add(NSView *view) { [[window_ contentView] addSubview:view]; }

  /// What the window shows, autoreleased.
  NSBitmapImageRep *Picture() const;

 private:
  NSWindow *window_;
};

/// Counts what controls send to it.
int ActionCount(id counter);

/// A target, autoreleased, that counts the action which is returned by CountedAction. Controls do not retain it.
id ActionCounter();
SEL CountedAction();

}  // namespace window_test
