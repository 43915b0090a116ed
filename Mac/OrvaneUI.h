// The one object through which the export workflow drives the windows.
#pragma once

#include <string>

#include "OrvaneProjectsAPI.h"

#ifdef __OBJC__
@class UploadStatusWindowController;
#else
class UploadStatusWindowController;
#endif

/// The facade of one export. It owns the service client and the progress window's controller. The clean-up hook
/// destroys it, also from inside Launch and UploadDlg, which touch nothing of it afterwards.
class OrvaneUI {
 public:
  OrvaneUI();
  ~OrvaneUI();

  OrvaneUI(const OrvaneUI&) = delete;
  OrvaneUI& operator=(const OrvaneUI&) = delete;

  /// The login stage: the saved login, or else the login window. Returns when it is over; g_step is then "upload" if
  /// the user is logged in. Throws what OrvaneProjectsAPI::login throws. [main-thread]
  void Launch();

  /// Runs the upload settings window and returns when it has closed. g_step is then "doUpload" if the user confirmed.
  /// [main-thread]
  void UploadDlg();

  /// Opens the progress window and starts the upload of g_fpath in the background. Returns at once.
  /// [main-thread]
  void Upload();

  /// Runs the complete window for the uploaded file's link. [main-thread]
  void Complete(std::string link);

  /// Passes the bytes to send and the bytes sent on to the progress window. [upload-queue]
  void UpdateProgress(double total, double now);

 private:
  bool PresetIsInstalled();
  bool LoginWithSavedCredentials();
  void RunLoginWindow();

  UploadStatusWindowController* statusController;
  OrvaneProjectsAPI* projectsApi;
};
