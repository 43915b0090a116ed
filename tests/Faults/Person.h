// Somebody at the plug-in's windows who does the same thing whatever happens.
#pragma once

#import <Cocoa/Cocoa.h>
#include <nlohmann/json.hpp>

#include "HostSession.h"

namespace window_test {

/// Logs in, chooses the first project and the last folder, uploads, and closes what is left: each window is worked
/// once, and closed when it is still there afterwards. That of a failed upload stays. Alerts are noted and dismissed.
/// Main thread.
class Person {
 public:
  /// What the person notes goes into seen; both must outlive this object. wish may hold
  /// "meanwhile": "export", "shutdown", "kill" or "end" (of its loop), done once when the window of the title "in" is
  /// up, after which the file "interrupted" is there; "remember" (bool), "again" (bool: log in once more, without it),
  /// "download" (bool: press the button of the notice of a newer version),
  /// "vanish" (a folder that goes before Upload is pressed), "open" (bool: press the button of the complete window),
  /// "tries" (how often a failed upload of an export is tried again) and "close" (bool: then close its window).
  Person(const nlohmann::json &wish, orvane_host::HostSession &host, nlohmann::json &seen);

  /// Looks at the windows and does the next thing. To be called again and again, also in modal loops.
  void Act();

  /// Before each export.
  void BeginExport();

  /// Whether nothing is left to wait for: no window, or only that of an upload that has failed.
  bool ExportIsOver();

  /// Notes the heap in KiB, and the numbers of open files and threads. Also called before each try.
  void NoteLevels();

 private:
  void WorkOn(NSString *title);
  bool Interrupts(NSString *title);
  void WorkLogin();
  void WorkUpload();
  bool IsDoneWithFailure();
  void WorkFailure();
  void ReadAlert();
  void NoteProgress();

  const nlohmann::json &wish_;
  orvane_host::HostSession &host_;
  nlohmann::json &seen_;
  NSString *title_ = nil;  // of the window that the last looks found
  int looks_ = 0;
  int alert_looks_ = 0;
  int quiet_ = 0;
  int logins_ = 0;
  int uploads_ = 0;
  int tries_ = 0;
  bool busy_ = false;  // works a window: only alerts are for the person
  bool dismissing_ = false;
  bool interrupted_ = false;
};

}  // namespace window_test
