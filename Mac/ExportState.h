// What the plug-in's one export is doing, beside the workflow's variables.
#pragma once

#include <string>

/// [main-thread]
struct ExportState {
  enum class Activity {
    kNone,     ///< nothing; the window of a failed upload may stand on the screen
    kWindows,  ///< the host's call has not returned, or the complete window is up
    kUpload,   ///< from the start of the upload until its link or its alert is on the screen, the alert included
  };

  Activity activity = Activity::kNone;
  /// The facade has been created and not cleaned up.
  bool open = false;
  /// Something was thrown in it.
  bool failed = false;
  /// Where the host was asked to render to, in UTF-8; g_fpath is cut when that is long. Empty when it was not asked.
  std::string film;
};

extern ExportState g_export;

/// While one lives, windows of the export may be modal. An upload that has begun meanwhile goes on after it.
/// [main-thread]
class ExportWindows {
 public:
  ExportWindows();
  ~ExportWindows();
  ExportWindows(const ExportWindows&) = delete;
  ExportWindows& operator=(const ExportWindows&) = delete;
};
