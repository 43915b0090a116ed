// GNUstep's alert panel sets its message in one line of a large font and cuts off what does not fit. AppKit's wraps it.
// Here a long message gets a smaller font.
#import <Cocoa/Cocoa.h>

#include "MethodReplacement.h"
#include "Replacements.h"

namespace {

using SizePanelToFit = void (*)(id, SEL);
SizePanelToFit original_size_panel_to_fit;

// Points. The panel leaves this much room for a message on a screen of usual width.
constexpr CGFloat kWidestMessage = 660;
constexpr CGFloat kFontSizes[] = {18, 16, 14, 13, 12, 11};

void FitMessageAndSizePanel(id panel, SEL selector) {
  NSTextField *message = [panel valueForKey:@"titleField"];
  for (CGFloat size : kFontSizes) {
    [message setFont:[NSFont systemFontOfSize:size]];
    if ([[message attributedStringValue] size].width <= kWidestMessage) break;
  }
  [message sizeToFit];
  original_size_panel_to_fit(panel, selector);
}

}  // namespace

void InstallAlertPanel() {
  original_size_panel_to_fit =
      ReplaceInstanceMethod<SizePanelToFit>("GSAlertPanel", "sizePanelToFit", FitMessageAndSizePanel);
}
