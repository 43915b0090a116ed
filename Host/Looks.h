// How AppKit looks in the host, and in the tests that show the plug-in's windows without it.
#pragma once

#import <Foundation/Foundation.h>

/// Registers AppKit's looks for a system without a theme of its own. They count only when they are there before the
/// application object. Main thread.
inline void RegisterLooks() {
  NSDictionary *looks = @{
    @"GSSuppressAppIcon" : @"YES",
    @"NSMenuInterfaceStyle" : @"NSWindows95InterfaceStyle",
    @"NSScrollViewInterfaceStyle" : @"NSMacintoshInterfaceStyle",
    @"NSFont" : @"LiberationSans",
    @"NSBoldFont" : @"LiberationSans-Bold",
    @"NSFontSize" : @"13",
    @"windowBackgroundColor" : @"0.93 0.93 0.93",
    @"controlBackgroundColor" : @"0.93 0.93 0.93",
    @"controlColor" : @"0.93 0.93 0.93",
  };
  [[NSUserDefaults standardUserDefaults] registerDefaults:looks];
}
