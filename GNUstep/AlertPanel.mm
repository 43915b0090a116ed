// GNUstep's alert panel sets its message in one line of a large font and cuts off what does not fit. Here it is laid
// out as AppKit's: the icon at the left, beside it the message in bold above the informative text, both wrapped, and
// the buttons in a row at the lower right. Its close button, which most window managers show on any window, presses its
// default button, and it comes up above floating windows.
#import <Cocoa/Cocoa.h>
#import <GNUstepGUI/GSDisplayServer.h>

#include <algorithm>

#include "Replacements.h"

namespace {

// Points.
constexpr CGFloat kMargin = 20;
constexpr CGFloat kIconSize = 64;
constexpr CGFloat kTextLeft = kMargin + kIconSize + 16;
constexpr CGFloat kTextWidth = 420;
constexpr CGFloat kTextGap = 8;
constexpr CGFloat kFieldPadding = 2;  // of a field without a border, at its left and right
constexpr CGFloat kButtonHeight = 24;
constexpr CGFloat kNarrowestButton = 100;
constexpr CGFloat kButtonPadding = 22;
constexpr CGFloat kButtonGap = 12;
constexpr CGFloat kBezelRoom = 6;  // within a push button's frame, at the left and right of what is drawn
constexpr CGFloat kScreenMargin = 40;

// Wraps the text into its lines and makes the field as high as they are. A text that is not there has no height.
void FitField(NSTextField *field, NSFont *font) {
  [field setFont:font];
  [field setAlignment:NSTextAlignmentLeft];
  [[field cell] setWraps:YES];
  [[field cell] setLineBreakMode:NSLineBreakByWordWrapping];
  // The cell's own measure of its height knows nothing of wrapping.
  const NSSize room = NSMakeSize(kTextWidth - 2 * kFieldPadding, 1e6);
  const NSRect lines = [[field attributedStringValue] boundingRectWithSize:room
                                                                   options:NSStringDrawingUsesLineFragmentOrigin];
  [field setFrameSize:NSMakeSize(kTextWidth, [[field stringValue] length] > 0 ? ceil(NSHeight(lines)) : 0)];
}

// Puts the texts below each other into a view that is at most `highest` high. When they are higher it shows their
// beginning, and scrolls.
NSScrollView *MakeTexts(NSTextField *message, NSTextField *informative, CGFloat highest) {
  FitField(message, [NSFont boldSystemFontOfSize:13]);
  FitField(informative, [NSFont systemFontOfSize:12]);
  const CGFloat above = NSHeight([informative frame]) + kTextGap;
  const CGFloat height = above + NSHeight([message frame]);
  NSView *page = [[[NSView alloc] initWithFrame:NSMakeRect(0, 0, kTextWidth, height)] autorelease];
  [message setFrameOrigin:NSMakePoint(0, above)];
  [informative setFrameOrigin:NSZeroPoint];
  [page addSubview:message];
  [page addSubview:informative];

  const bool scrolls = height > highest;
  const NSRect frame =
      NSMakeRect(0, 0, kTextWidth + (scrolls ? [NSScroller scrollerWidth] : 0), std::min(height, highest));
  NSScrollView *texts = [[[NSScrollView alloc] initWithFrame:frame] autorelease];
  [texts setDrawsBackground:NO];
  [texts setHasVerticalScroller:scrolls];
  [texts setDocumentView:page];
  [[texts contentView] scrollToPoint:NSMakePoint(0, height - NSHeight(frame))];
  [texts reflectScrolledClipView:[texts contentView]];
  return texts;
}

// From the right to the left: the default button comes first.
void PlaceButtons(id panel, CGFloat right) {
  for (NSString *key in @[ @"defButton", @"altButton", @"othButton" ]) {
    NSButton *button = [panel valueForKey:key];
    if ([button superview] != [panel contentView]) continue;
    [button setBezelStyle:NSRoundedBezelStyle];
    [button setImagePosition:NSNoImage];
    const CGFloat title = ceil([[button attributedTitle] size].width);
    const CGFloat width = std::max(kNarrowestButton, title + 2 * kButtonPadding);
    [button setFrame:NSMakeRect(right - width + kBezelRoom, kMargin, width, kButtonHeight)];
    right -= width - 2 * kBezelRoom + kButtonGap;
  }
}

void PlaceIcon(id panel, CGFloat top) {
  NSButton *button = [panel valueForKey:@"icoButton"];
  NSImage *icon = [[[button image] copy] autorelease];
  [icon setScalesWhenResized:YES];
  [icon setSize:NSMakeSize(kIconSize, kIconSize)];
  [button setImage:icon];
  [button setImagePosition:NSImageOnly];
  [button setBordered:NO];
  [button setRefusesFirstResponder:YES];
  [button setFrame:NSMakeRect(kMargin, top - kIconSize, kIconSize, kIconSize)];
}

void LayOutPanel(id panel, SEL) {
  NSView *content = [panel contentView];
  const CGFloat below = 2 * kMargin + kButtonHeight;
  const CGFloat screen = NSHeight([[NSScreen mainScreen] visibleFrame]) - 2 * kScreenMargin;
  NSScrollView *texts =
      MakeTexts([panel valueForKey:@"titleField"], [panel valueForKey:@"messageField"], screen - below - kMargin);
  // What an earlier layout or GNUstep's own has put there: the former texts and the line between the texts.
  for (NSView *view in [[[content subviews] copy] autorelease]) {
    if ([view isKindOfClass:[NSBox class]] || [view isKindOfClass:[NSScrollView class]]) [view removeFromSuperview];
  }
  const NSSize text = [texts frame].size;
  const NSSize size = NSMakeSize(kTextLeft + text.width + kMargin, below + std::max(text.height, kIconSize) + kMargin);
  [panel setContentSize:size];
  [texts setFrameOrigin:NSMakePoint(kTextLeft, size.height - kMargin - text.height)];
  [content addSubview:texts];
  PlaceIcon(panel, size.height - kMargin);
  PlaceButtons(panel, size.width - kMargin);
  [content setNeedsDisplay:YES];
}

id (*original_init_with_content_rect)(id, SEL, NSRect, NSUInteger, NSBackingStoreType, BOOL);

void (*original_order_window)(id, SEL, NSWindowOrderingMode, NSInteger);

// A window that does not say that it can be closed has its program killed by the window manager's close button. The
// window is made at once: ordering it needs its number.
id InitClosablePanel(id panel, SEL selector, NSRect rect, NSUInteger style, NSBackingStoreType backing, BOOL) {
  return original_init_with_content_rect(panel, selector, rect, style | NSClosableWindowMask, backing, NO);
}

// Asked when the window is to be closed.
BOOL PressDefaultButton(id panel, SEL, id) {
  [[panel valueForKey:@"defButton"] performClick:nil];
  return NO;
}

// Window managers keep what floats above what does not, whatever is ordered front; a window that belongs to a floating
// one they keep above that.
void OrderAboveFloatingWindows(id panel, SEL selector, NSWindowOrderingMode place, NSInteger other) {
  if (place != NSWindowOut) {
    for (NSWindow *window in [NSApp orderedWindows]) {
      if (![window isVisible] || [window level] < NSFloatingWindowLevel || window == panel) continue;
      [GSServerForWindow(window) setParentWindow:static_cast<int>([window windowNumber])
                                  forChildWindow:static_cast<int>([panel windowNumber])];
      break;
    }
  }
  original_order_window(panel, selector, place, other);
}

}  // namespace

const Replacement init("GSAlertPanel", "initWithContentRect:styleMask:backing:defer:", InitClosablePanel,
                       &original_init_with_content_rect);
const Replacement order("GSAlertPanel", "orderWindow:relativeTo:", OrderAboveFloatingWindows, &original_order_window);
const Replacement layout("GSAlertPanel", "sizePanelToFit", LayOutPanel);
const Replacement close_button([] {
  class_addMethod(objc_getClass("GSAlertPanel"), sel_registerName("windowShouldClose:"),
                  reinterpret_cast<IMP>(PressDefaultButton), "c@:@");
});
