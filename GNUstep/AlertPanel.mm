// GNUstep's alert panel sets its message in one line of a large font and cuts off what does not fit. Here it is laid
// out as AppKit's: the icon at the left, beside it the message in bold above the informative text, both wrapped, and
// the buttons in a row at the lower right.
#import <Cocoa/Cocoa.h>

#include <algorithm>
#include <vector>

#include "MethodReplacement.h"
#include "Replacements.h"

namespace {

// Points.
constexpr CGFloat kMargin = 20;
constexpr CGFloat kIconSize = 64;
constexpr CGFloat kIconGap = 16;
constexpr CGFloat kTextGap = 8;
constexpr CGFloat kFieldPadding = 2;  // of a field without a border, at its left and right
constexpr CGFloat kNarrowestText = 280;
constexpr CGFloat kWidestText = 420;
constexpr CGFloat kMessageSize = 13;
constexpr CGFloat kInformativeSize = 12;
constexpr CGFloat kButtonHeight = 24;
constexpr CGFloat kNarrowestButton = 88;
constexpr CGFloat kButtonPadding = 16;
constexpr CGFloat kButtonGap = 12;
constexpr CGFloat kBezelRoom = 6;  // within a push button's frame, at the left and right of what is drawn
constexpr CGFloat kScreenMargin = 40;

NSTextField *Field(id panel, NSString *key) {
  NSTextField *field = [panel valueForKey:key];
  return [[field stringValue] length] > 0 ? field : nil;
}

CGFloat WidthOnOneLine(NSTextField *field) {
  return field ? ceil([[field cell] cellSize].width) + 2 * kFieldPadding : 0;
}

CGFloat HeightAtWidth(NSTextField *field, CGFloat width) {
  if (!field) return 0;
  // The cell's own measure of its height knows nothing of wrapping.
  const NSSize room = NSMakeSize(width - 2 * kFieldPadding, 1e6);
  return ceil(NSHeight([[field attributedStringValue] boundingRectWithSize:room
                                                                   options:NSStringDrawingUsesLineFragmentOrigin]));
}

void SetTextStyle(NSTextField *field, NSFont *font) {
  [field setFont:font];
  [field setAlignment:NSTextAlignmentLeft];
  [[field cell] setWraps:YES];
  [[field cell] setLineBreakMode:NSLineBreakByWordWrapping];
}

// The panel's buttons from the right to the left: the default one comes first.
std::vector<NSButton *> ButtonsOf(id panel) {
  NSView *content = [panel contentView];
  std::vector<NSButton *> buttons;
  for (NSString *key in @[ @"defButton", @"altButton", @"othButton" ]) {
    NSButton *button = [panel valueForKey:key];
    if ([button superview] == content) buttons.push_back(button);
  }
  NSButton *icon = [panel valueForKey:@"icoButton"];
  for (NSView *view in [content subviews]) {
    if (![view isKindOfClass:[NSButton class]] || view == icon) continue;
    NSButton *button = static_cast<NSButton *>(view);
    if (std::find(buttons.begin(), buttons.end(), button) == buttons.end()) buttons.push_back(button);
  }
  return buttons;
}

CGFloat WidthOfButton(NSButton *button) {
  const CGFloat title = [[button attributedTitle] size].width;
  return std::max(kNarrowestButton, static_cast<CGFloat>(ceil(title)) + 2 * kButtonPadding);
}

CGFloat WidthOfButtons(const std::vector<NSButton *> &buttons) {
  CGFloat width = 0;
  for (NSButton *button : buttons) width += WidthOfButton(button) + (width > 0 ? kButtonGap : 0);
  return width;
}

void PlaceButtons(const std::vector<NSButton *> &buttons, CGFloat right) {
  for (NSButton *button : buttons) {
    const CGFloat width = WidthOfButton(button);
    [button setBezelStyle:NSRoundedBezelStyle];
    [button setImagePosition:NSNoImage];
    [button setFrame:NSMakeRect(right - width - kBezelRoom, kMargin, width + 2 * kBezelRoom, kButtonHeight)];
    right -= width + kButtonGap;
  }
}

// Puts the texts, which are `width` wide, into a scroll view that is at most `highest` high. When they are higher it
// shows a part of them, and scrolls.
NSScrollView *MakeTexts(NSTextField *message, NSTextField *informative, CGFloat width, CGFloat highest) {
  const CGFloat message_height = HeightAtWidth(message, width);
  const CGFloat informative_height = HeightAtWidth(informative, width);
  const CGFloat gap = message && informative ? kTextGap : 0;
  const CGFloat height = message_height + gap + informative_height;
  NSView *page = [[[NSView alloc] initWithFrame:NSMakeRect(0, 0, width, height)] autorelease];
  [message setFrame:NSMakeRect(0, informative_height + gap, width, message_height)];
  [informative setFrame:NSMakeRect(0, 0, width, informative_height)];
  if (message) [page addSubview:message];
  if (informative) [page addSubview:informative];

  const bool scrolls = height > highest;
  const CGFloat scroller = scrolls ? [NSScroller scrollerWidth] : 0;
  const NSRect frame = NSMakeRect(0, 0, width + scroller, scrolls ? highest : height);
  NSScrollView *texts = [[[NSScrollView alloc] initWithFrame:frame] autorelease];
  [texts setBorderType:NSNoBorder];
  [texts setDrawsBackground:NO];
  [texts setHasVerticalScroller:scrolls];
  [texts setDocumentView:page];
  [[texts contentView] scrollToPoint:NSMakePoint(0, height - NSHeight(frame))];
  [texts reflectScrolledClipView:[texts contentView]];
  return texts;
}

// Takes away what an earlier layout or GNUstep's own has put there: the former texts and the line between the texts.
void RemoveOldViews(NSView *content) {
  for (NSView *view in [[[content subviews] copy] autorelease]) {
    if ([view isKindOfClass:[NSBox class]] || [view isKindOfClass:[NSScrollView class]]) [view removeFromSuperview];
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
  NSTextField *message = Field(panel, @"titleField");
  NSTextField *informative = Field(panel, @"messageField");
  SetTextStyle(message, [NSFont boldSystemFontOfSize:kMessageSize]);
  SetTextStyle(informative, [NSFont systemFontOfSize:kInformativeSize]);
  const std::vector<NSButton *> buttons = ButtonsOf(panel);
  const CGFloat on_one_line = std::max(WidthOnOneLine(message), WidthOnOneLine(informative));
  const CGFloat left = kMargin + kIconSize + kIconGap;
  const CGFloat for_buttons = WidthOfButtons(buttons) + kMargin - left;
  const CGFloat text_width = std::max(std::clamp(on_one_line, kNarrowestText, kWidestText), for_buttons);
  const CGFloat below = kMargin + kButtonHeight + kMargin;
  const CGFloat screen = NSHeight([[NSScreen mainScreen] visibleFrame]) - 2 * kScreenMargin;

  NSView *content = [panel contentView];
  NSScrollView *texts = MakeTexts(message, informative, text_width, screen - below - kMargin);
  RemoveOldViews(content);
  const NSSize text_size = [texts frame].size;
  const CGFloat text_room = std::max(text_size.height, kIconSize);
  const NSSize size = NSMakeSize(left + text_size.width + kMargin, below + text_room + kMargin);
  [panel setContentSize:size];
  [texts setFrameOrigin:NSMakePoint(left, size.height - kMargin - text_size.height)];
  [content addSubview:texts];
  PlaceIcon(panel, size.height - kMargin);
  PlaceButtons(buttons, size.width - kMargin);
  [content setNeedsDisplay:YES];
}

}  // namespace

void InstallAlertPanel() {
  ReplaceInstanceMethod<void (*)(id, SEL)>("GSAlertPanel", "sizePanelToFit", LayOutPanel);
}
