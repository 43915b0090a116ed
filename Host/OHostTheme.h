#import <AppKit/AppKit.h>
#import <GNUstepGUI/GSTheme.h>

/// AppKit's controls in the colours of the plug-in's images: white fields and buttons with fine round borders, blue for
/// what is chosen and where the keyboard's input goes. The theme belongs to the program that shows the windows; the
/// plug-in does without it. Main thread.
@interface OHostTheme : GSTheme

/// Makes a theme of this class the current one before the application finishes launching, which is the earliest time
/// that AppKit takes one.
+ (void)setThemeWhenLaunched;

@end
