#include "Replacements.h"

#import <Cocoa/Cocoa.h>

// Installs the replacements as soon as there is an application: when this code is in a bundle, at once, and when it is
// in the program itself, before the application finishes launching. Earlier would be too early: a class whose method
// is replaced before its first use is used without having been initialised.
@interface OrvReplacements : NSObject
@end

@implementation OrvReplacements

+ (void)load {
  @autoreleasepool {
    if (NSApp) {
      [self install:nil];
      return;
    }
    [[NSNotificationCenter defaultCenter] addObserver:self
                                             selector:@selector(install:)
                                                 name:NSApplicationWillFinishLaunchingNotification
                                               object:nil];
  }
}

+ (void)install:(NSNotification *)notification {
  [[NSNotificationCenter defaultCenter] removeObserver:self];
  InstallAccessibilityLabel();
  InstallAlertPanel();
  InstallFontFallback();
  InstallJsonReader();
  InstallModalLoop();
  InstallNibLoading();
  InstallPopUpButton();
  InstallReturnKey();
  InstallTemplateImages();
  InstallTextTruncation();
  InstallWindowDisplay();
  InstallWorkspaceOpen();
}

@end
