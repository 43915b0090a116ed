// The upload as the plug-in makes it.
#pragma once

#include <string>

#include "OrvaneProjectsAPI.h"

namespace bench {

/// An upload of g_fpath with the progress window open.
class PluginUpload {
 public:
  /// The client must be logged in. Makes the window. One at a time; main thread, as everything here.
  explicit PluginUpload(OrvaneProjectsAPI& client);
  ~PluginUpload();
  PluginUpload(const PluginUpload&) = delete;
  PluginUpload& operator=(const PluginUpload&) = delete;

  /// Shows the window and uploads while the main loop runs. Returns the seconds from there to the completion hook; the
  /// plug-in has deleted g_fpath then. Throws std::runtime_error when the upload fails.
  double Run();
};

/// Makes an empty file of that many bytes at g_fpath, of which only the length takes room on the disk. A second name
/// for it stays in place, so that deleting g_fpath costs the same for every length. Throws std::runtime_error.
void MakeUploadFile(const std::string& folder, long long bytes);

/// Restores g_fpath after the plug-in has deleted it. Throws std::runtime_error.
void RestoreUploadFile();

}  // namespace bench
