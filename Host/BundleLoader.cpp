#include "BundleLoader.h"

#include <dlfcn.h>

#include <algorithm>
#include <filesystem>

namespace orvane_host {

namespace fs = std::filesystem;

std::vector<std::string> FindPluginBundles(const std::string& folder) {
  std::vector<std::string> found;
  std::error_code error;
  // An installation may link a bundle or a folder of bundles into its place.
  const auto options = fs::directory_options::follow_directory_symlink | fs::directory_options::skip_permission_denied;
  fs::recursive_directory_iterator entry(folder, options, error);
  for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
    if (entry->path().extension() == ".bundle" && entry->is_directory(error)) {
      found.push_back(entry->path().string());
      entry.disable_recursion_pending();  // a bundle is one thing, whatever lies inside
    }
  }
  std::sort(found.begin(), found.end());
  return found;
}

ExportControllerEntryFunc LoadPluginBundle(const std::string& path) {
  if (!fs::is_directory(path)) throw PluginError("cannot load " + path + ": there is no such folder");
  std::string error;
  void* code = internal::LoadBundleCode(fs::absolute(path).lexically_normal().string(), error);
  if (!code) throw PluginError("cannot load " + path + ": " + error);
  void* entry = dlsym(code, EXPORT_CONTROLLER_ENTRY_NAME);
  if (!entry) throw PluginError(path + " is not an export controller: it has no " EXPORT_CONTROLLER_ENTRY_NAME);
  return reinterpret_cast<ExportControllerEntryFunc>(entry);
}

}  // namespace orvane_host
