#include "Looks.h"

#import "OHostTheme.h"

void RegisterLooks() {
  NSDictionary *looks = @{
    @"GSSuppressAppIcon" : @"YES",
    @"NSMenuInterfaceStyle" : @"NSWindows95InterfaceStyle",
    @"NSScrollViewInterfaceStyle" : @"NSMacintoshInterfaceStyle",
    @"NSFont" : @"LiberationSans",
    @"NSBoldFont" : @"LiberationSans-Bold",
    @"NSFontSize" : @"13",
  };
  [[NSUserDefaults standardUserDefaults] registerDefaults:looks];
  [OHostTheme setThemeWhenLaunched];
}
