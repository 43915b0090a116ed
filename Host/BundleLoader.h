// Finding and loading plug-in bundles.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "PrSDKExportController.h"

namespace orvane_host {

/// The folder that the application shares with others for its plug-ins.
constexpr const char* kMediaCoreFolder = ORVANE_MEDIACORE_FOLDER;

/// A plug-in that cannot be used; what() is a sentence that names it.
class PluginError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The paths of the bundles (NAME.bundle) in the folder and its sub-folders, sorted. None when there is no such folder.
std::vector<std::string> FindPluginBundles(const std::string& folder);

/// Loads the bundle at path for the rest of the process and returns its entry point. Throws PluginError. Main thread.
ExportControllerEntryFunc LoadPluginBundle(const std::string& path);

namespace internal {

/// Loads the bundle's code for good. Returns its handle for dlsym(), or null and the reason in error.
void* LoadBundleCode(const std::string& path, std::string& error);

}  // namespace internal
}  // namespace orvane_host
