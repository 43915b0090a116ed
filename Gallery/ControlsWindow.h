// The custom controls in all their states, on one sheet.
#pragma once

#import <Cocoa/Cocoa.h>

/// A window, owned by the caller, with the nineteen backgrounds at three widths, the five button styles at rest and
/// pressed, chips, icon and window pattern. The controls can be pressed; nothing happens then. Main thread.
NSWindow* MakeControlsWindow();
