// Gives what the windows read of the service's answers, and the saved login, texts of libFuzzer's making. Whatever they
// hold, nothing is raised, and what is read is text.
#import <Foundation/Foundation.h>

#include <cstdint>
#include <cstdlib>
#include <string>

#include "PlatformString.h"
#include "Replacements.h"
#import "SavedLogin.h"
#import "ServiceAnswer.h"

static void RequireText(NSString *text) {
  if (text && ![text isKindOfClass:[NSString class]]) std::abort();
}

static void ReadEntries(NSDictionary *root) {
  for (id entry in ListMember(root, @"payload")) {
    for (NSString *key in @[ @"id", @"project_name", @"name" ]) RequireText(TextMember(entry, key));
    IntegerMember(entry, @"sub_folders");
  }
}

static void ReadUploadAnswer(NSDictionary *root) {
  for (NSString *key in @[ @"status", @"message" ]) RequireText(TextMember(root, key));
  RequireText(TextMember(ObjectMember(root, @"payload"), @"link"));
}

// GNUstep keeps what it makes for its own use. A leak of ours would show in the memory limit.
extern "C" const char *__asan_default_options() {
  return "detect_leaks=0";
}

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
  InstallJsonReader();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, size_t size) {
  @autoreleasepool {
    const std::string text(reinterpret_cast<const char *>(data), size);
    NSDictionary *root = AnswerRoot(text);
    ReadEntries(root);
    ReadUploadAnswer(root);
    const SavedLogin login = SavedLoginFromText(FromUtf8(text));
    if (login.password.size() > size) std::abort();
    if (Shortened(text, 10).size() > 13) std::abort();
  }
  return 0;
}
