#import "Alert.h"

@interface NSObject (AlertSheetDelegate)
- (void)alertDidEnd:(NSAlert *)alert returnCode:(NSInteger)returnCode contextInfo:(void *)contextInfo;
@end

static NSAlert *MakeAlert(NSAlertStyle style, NSString *message, NSString *informative, NSImage *icon) {
  NSAlert *alert = [[[NSAlert alloc] init] autorelease];
  [alert setAlertStyle:style];
  [alert setMessageText:message];
  [alert setInformativeText:informative];
  if (icon) [alert setIcon:icon];
  return alert;
}

void RunAlert(NSAlertStyle style, NSString *message, NSString *informative, NSImage *icon) {
  [MakeAlert(style, message, informative, icon) runModal];
}

void ShowAlertSheet(NSWindow *window, id delegate, NSString *message, NSString *informative, NSImage *icon) {
  NSAlert *alert = MakeAlert(NSAlertStyleWarning, message, informative, icon);
  [alert beginSheetModalForWindow:window
                    modalDelegate:delegate
                   didEndSelector:@selector(alertDidEnd:returnCode:contextInfo:)
                      contextInfo:NULL];
}
