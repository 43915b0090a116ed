// How AppKit's controls look on Linux, in every program that shows the plug-in's windows.
#pragma once

#import <AppKit/AppKit.h>
#import <GNUstepGUI/GSTheme.h>

/// Gives AppKit's controls free fonts, light colours and plain shapes for the time when the application launches. Call
/// it once, before there is an application object. Main thread.
void UseLinuxTheme();

/// White buttons and fields with thin borders, and blue for what is chosen.
@interface LinuxTheme : GSTheme
@end
