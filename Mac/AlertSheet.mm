#import "AlertSheet.h"

@interface NSObject (AlertSheetDelegate)
- (void)alertDidEnd:(NSAlert *)alert returnCode:(NSInteger)returnCode contextInfo:(void *)contextInfo;
@end

void ShowAlertSheet(NSWindow *window, id delegate, NSString *message, NSString *informative, NSImage *icon) {
  NSAlert *alert = [[[NSAlert alloc] init] autorelease];
  [alert setMessageText:message];
  [alert setInformativeText:informative];
  [alert setIcon:icon];
  [alert beginSheetModalForWindow:window
                    modalDelegate:delegate
                   didEndSelector:@selector(alertDidEnd:returnCode:contextInfo:)
                      contextInfo:NULL];
}
