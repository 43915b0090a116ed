// The built plug-in in a host and against a service in this process.
#pragma once

#import <Cocoa/Cocoa.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "HostSession.h"
#include "Service.h"
#include "TemporaryFolder.h"
#include "WindowScript.h"

namespace window_test {

/// A host session with the built bundle loaded and started, a service with the demo data on a free port, and a
/// temporary-items folder of its own. The sequence is small and lasts half a second.
class PluginRun : public testing::Test {
 protected:
  static constexpr const char *kPassword = "let-me-in";

  void SetUp() override;
  void TearDown() override;

  /// Exports while the script acts. Returns what the plug-in answered. The body ends when no plug-in window is left, or
  /// when the script is through and only the progress window of a failed upload is.
  csSDK_int32 Export(const std::function<void(Script &)> &script);

  /// Script steps. Each waits for its window.
  static void LogInAndRemember(Script &actions);
  static void ChooseAndUpload(Script &actions);
  static void CloseComplete(Script &actions);
  static void UploadAndClose(Script &actions);
  static void CloseWindow(Script &actions, NSString *title);

  /// Saves the login as "Remember me" does. At first there is none.
  static void SaveLogin();
  static bool LoginIsSaved();

  /// Files in the temporary-items folder, and files that the service has stored, with their SHA-256.
  std::vector<std::string> TemporaryFiles() const;
  std::vector<std::string> StoredDigests() const;

  /// The temporary folder outside of this test.
  const std::filesystem::path outer_ = std::filesystem::temp_directory_path();
  const TemporaryFolder folder_;
  std::unique_ptr<orvane_service::Service> service_;
  std::unique_ptr<orvane_host::HostSession> host_;
};

}  // namespace window_test
