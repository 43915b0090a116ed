#import <Cocoa/Cocoa.h>

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <string>

#import "NewFolder.h"
#import "PictureComparison.h"

namespace {

// Runs the gallery with those options; its output goes to the test's. Returns its exit status.
int RunGallery(const std::string &options) {
  const int status = system(("exec '" ORVANE_GALLERY_PROGRAM "' " + options).c_str());
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

TEST(Gallery, LooksAsItsPicturesInTheDocumentation) {
  NSString *folder = window_test::NewFolder();
  ASSERT_NE(folder, nil);
  ASSERT_EQ(RunGallery(std::string("--pictures '") + [folder UTF8String] + "'"), 0);
  NSArray *names = [[NSFileManager defaultManager] contentsOfDirectoryAtPath:folder error:NULL];
  ASSERT_TRUE([names containsObject:@"gallery.png"]);
  for (NSString *name in names) {
    NSBitmapImageRep *found = window_test::ReadPicture([folder stringByAppendingPathComponent:name]);
    NSBitmapImageRep *wanted = window_test::ReadPicture([@ORVANE_PICTURES stringByAppendingPathComponent:name]);
    ASSERT_NE(found, nil) << [name UTF8String];
    ASSERT_NE(wanted, nil) << [name UTF8String] << " is not in docs/; scripts/pictures makes it";
    EXPECT_EQ(window_test::ComparePictures(found, wanted, window_test::DifferencesFolder(),
                                           [name stringByDeletingPathExtension]),
              "")
        << [name UTF8String];
  }
}

TEST(Gallery, RefusesWhatItCannotDo) {
  EXPECT_EQ(RunGallery("--scene no-such-scene"), 2);
  EXPECT_EQ(RunGallery("something"), 2);
  EXPECT_EQ(RunGallery("--pictures /no/such/folder"), 1);
}
