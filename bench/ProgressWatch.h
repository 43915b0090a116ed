// Counts the progress calls that libcurl makes, before the plug-in sees them.
#pragma once

namespace bench {

/// While it lives, a progress function that this process sets on a transfer handle is called through one that counts.
/// Nothing else of the handle is touched. One at a time; a transfer must begin and end within its life.
///
/// Works by standing in for curl_easy_setopt(), so the file must be linked into the executable itself.
class ProgressWatch {
 public:
  ProgressWatch();
  ~ProgressWatch();
  ProgressWatch(const ProgressWatch&) = delete;
  ProgressWatch& operator=(const ProgressWatch&) = delete;

  /// The calls since construction. Any thread.
  long long Calls() const;
};

}  // namespace bench
