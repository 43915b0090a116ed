#import "PluginWindows.h"

#import "Controls.h"

namespace window_test {

NSString *const kLoginTitle = @"Orvane: Log In";
NSString *const kUploadTitle = @"Orvane: Upload";
NSString *const kProgressTitle = @"Orvane: Uploading";
NSString *const kNotUploadedTitle = @"Orvane: Not Uploaded";
NSString *const kCompleteTitle = @"Orvane: Upload Complete";

id PluginControl(NSString *title, NSString *name) {
  return [static_cast<id>([WindowTitled(title) delegate]) valueForKey:name];
}

void LogIn(const char *password, bool remember) {
  [PluginControl(kLoginTitle, @"inputSubdomain") setStringValue:@"acme"];
  [PluginControl(kLoginTitle, @"inputUsername") setStringValue:@"editor"];
  [PluginControl(kLoginTitle, @"inputPassword") setStringValue:[NSString stringWithUTF8String:password]];
  [PluginControl(kLoginTitle, @"rememberMeCheckbox") setState:remember ? NSOnState : NSOffState];
  Press(PluginControl(kLoginTitle, @"loginBtn"));
}

void ChooseProject(NSString *title) {
  Choose(PluginControl(kUploadTitle, @"inputProject"), title);
}

void ChooseFolder(NSString *title) {
  Choose(PluginControl(kUploadTitle, @"inputFolder"), title);
}

void Upload(NSString *title) {
  [PluginControl(kUploadTitle, @"inputTitle") setStringValue:title];
  Press(PluginControl(kUploadTitle, @"uploadBtn"));
}

}  // namespace window_test
