// One run of the host without its windows: a sequence, the plug-ins, and what came of their calls.
#pragma once

#include <array>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "BundleLoader.h"
#include "ExitStatus.h"
#include "HostCalls.h"
#include "Renderer.h"
#include "Sequence.h"

namespace orvane_host {

/// Is told what happens in a session. Every function is called on the main thread, from within a call to the plug-in.
class SessionListener {
 public:
  virtual ~SessionListener() = default;
  virtual void EventRaised(const ErrorEvent&) {}
  /// A render begins; preset is the preset's name.
  virtual void RenderStarted(const std::string& /*destination*/, const std::string& /*preset*/) {}
  /// Comes every few hundredths of a second, also while done (0 to 1) stands still; false cancels the render.
  virtual bool RenderProgressed(double /*done*/) { return true; }
  /// Comes for every RenderStarted, and without one when the preset could not be read.
  virtual void RenderEnded(const RenderResult&) {}
};

/// The thread that makes the session is the main thread, on which everything here is called. There is one session at a
/// time in a process. A violation by the plug-in ends the process.
class HostSession : private HostCalls {
 public:
  /// listener may be null; it must outlive the session.
  explicit HostSession(const Sequence& sequence, SessionListener* listener = nullptr);
  ~HostSession() override;
  HostSession(const HostSession&) = delete;
  HostSession& operator=(const HostSession&) = delete;

  /// Loads the bundle at path. Throws PluginError. Returns its index.
  size_t Load(const std::string& path);

  /// Starts the plug-ins that are loaded and not started. One that fails stays unusable; then throws PluginError.
  void Startup();

  /// The name that a started plug-in gave itself, for its menu item; empty for one that did not start.
  const std::string& DisplayName(size_t plugin = 0) const { return plugins_.at(plugin).name; }

  /// Has a started plug-in export the sequence. Returns what it answered. May be called again from within, as a menu
  /// can be used while a plug-in's window stands.
  csSDK_int32 ExportTimeline(size_t plugin = 0);

  /// Shuts the started plug-ins down and checks that they gave everything back. Does nothing the second time.
  void Shutdown();

  /// Whether a call to a plug-in is running.
  bool InCall() const { return depth_ > 0; }

  /// What came of the last export that has ended; kExported before the first.
  ExitStatus Outcome() const { return outcome_; }

  const Sequence& OpenSequence() const { return sequence_; }
  const std::vector<ErrorEvent>& Events() const { return events_; }
  const std::vector<RenderedFile>& RenderedFiles() const { return rendered_; }

  /// The fault of the renders from now on.
  void SetRenderFault(RenderFault fault) { fault_ = fault; }

 private:
  struct Plugin {
    std::string path;
    ExportControllerEntryFunc entry = nullptr;
    bool failed = false;
    bool started = false;
    std::string name;
  };

  // What one call of ExportTimeline saw.
  struct ExportRecord {
    bool asked = false;
    RenderOutcome render = RenderOutcome::kFailed;
    bool error_event = false;
  };

  csSDK_int32 CallEntry(const Plugin& plugin, csSDK_int32 selector, void* param);
  void StartPlugin(Plugin& plugin);
  void CheckNothingHeld();
  static ExitStatus Judge(const ExportRecord& record, csSDK_int32 answer);

  void CheckThread(const char* function) override;
  const void* Acquire(const char* name, csSDK_int32 version) override;
  void Release(const char* name, csSDK_int32 version) override;
  const Sequence& FindSequence(PrTimelineID timeline, const char* function) override;
  void CheckTimeline(csSDK_int64 data, PrTimelineID timeline, const char* function) override;
  prSuiteError Export(const ExportControllerExportRec& record) override;
  void Raise(const ErrorEvent& event) override;
  RenderResult RenderInto(const std::string& destination, const std::string& preset_path);

  Sequence sequence_;
  SessionListener* listener_;
  std::thread::id main_thread_;
  std::vector<Plugin> plugins_;
  std::map<std::pair<std::string, csSDK_int32>, int> held_suites_;
  std::vector<ErrorEvent> events_;
  std::vector<RenderedFile> rendered_;
  RenderFault fault_ = RenderFault::kNone;
  ExitStatus outcome_ = ExitStatus::kExported;
  ExportRecord* current_export_ = nullptr;
  int depth_ = 0;
};

}  // namespace orvane_host
