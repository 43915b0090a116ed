#include "HostSession.h"

#include <cstring>
#include <stdexcept>

#include "Fenced.h"
#include "PrSDKErrorSuite.h"
#include "Preset.h"
#include "SuiteStatus.h"
#include "Suites.h"
#include "Utf16.h"
#include "Violation.h"

namespace orvane_host {

namespace {

// The identifier of the one sequence: a number that no plug-in comes upon by chance, such as 0 or 1.
constexpr PrTimelineID kTimeline = 0x4F525631;

// The version of the parameters of the entry point.
constexpr csSDK_int32 kInterfaceVersion = 1;

bool session_exists = false;

}  // namespace

HostSession::HostSession(const Sequence& sequence, SessionListener* listener)
    : sequence_(sequence), listener_(listener), main_thread_(std::this_thread::get_id()) {
  if (session_exists) throw std::logic_error("there is a host session already");
  session_exists = true;
  SetHostCalls(this);
}

HostSession::~HostSession() {
  SetHostCalls(nullptr);
  session_exists = false;
}

size_t HostSession::Load(const std::string& path) {
  Plugin plugin;
  plugin.path = path;
  plugin.entry = LoadPluginBundle(path);
  plugins_.push_back(plugin);
  return plugins_.size() - 1;
}

void HostSession::Startup() {
  for (Plugin& plugin : plugins_) {
    if (!plugin.started && !plugin.failed) StartPlugin(plugin);
  }
}

void HostSession::StartPlugin(Plugin& plugin) {
  plugin.failed = true;  // until it has succeeded
  Fenced<ExportControllerInitRec> record;
  const csSDK_int32 answer = CallEntry(plugin, ecSelStartup, &record.value());
  if (!record.Intact()) ReportViolation("start-up wrote past the ends of the init record");
  if (answer != 0) throw PluginError(plugin.path + " failed to start: it answered " + std::to_string(answer));
  const auto name = ReadUtf16(record.value().displayName, EXPORT_CONTROLLER_TEXT_UNITS);
  if (!name || name->empty()) {
    ReportViolation("start-up left a display name that is empty, has no end or is not UTF-16");
  }
  plugin.name = *name;
  plugin.started = true;
  plugin.failed = false;
}

csSDK_int32 HostSession::CallEntry(const Plugin& plugin, csSDK_int32 selector, void* param) {
  ++depth_;  // a call that throws ends the process
  Fenced<ecStdParms> parameters;
  parameters.value() = {kInterfaceVersion, StandardSuites()};
  csSDK_int32 answer = 0;
  try {
    answer = plugin.entry(selector, &parameters.value(), param);
  } catch (const std::exception& error) {
    ReportViolation(std::string("an exception left the entry point: ") + error.what());
  } catch (...) {
    ReportViolation("an exception left the entry point");
  }
  const ecStdParms expected{kInterfaceVersion, StandardSuites()};
  if (!parameters.Intact() || memcmp(&parameters.value(), &expected, sizeof(expected)) != 0 || !TablesIntact()) {
    ReportViolation("the host's parameters or function tables were written to");
  }
  --depth_;
  return answer;
}

csSDK_int32 HostSession::ExportTimeline(size_t plugin) {
  if (!plugins_.at(plugin).started) throw std::logic_error("the plug-in was not started");
  ExportRecord record;
  ExportRecord* const outer = current_export_;
  current_export_ = &record;
  Fenced<ExportControllerTimelineInfoRec> timeline;
  const ExportControllerTimelineInfoRec info{reinterpret_cast<csSDK_int64>(this), kTimeline};
  timeline.value() = info;
  // A copy, because a nested call may load another plug-in.
  const Plugin called = plugins_[plugin];
  const csSDK_int32 answer = CallEntry(called, ecSelExportTimeline, &timeline.value());
  current_export_ = outer;
  if (!timeline.Intact() || memcmp(&timeline.value(), &info, sizeof(info)) != 0) {
    ReportViolation("the timeline record was written to");
  }
  outcome_ = Judge(record, answer);
  return answer;
}

ExitStatus HostSession::Judge(const ExportRecord& record, csSDK_int32 answer) {
  if (record.error_event) return ExitStatus::kPluginError;
  if (record.asked && record.render != RenderOutcome::kRendered) return ExitStatus::kRenderFailed;
  if (answer != kSuiteSuccess) return ExitStatus::kPluginError;
  return record.asked ? ExitStatus::kExported : ExitStatus::kUserCancelled;
}

void HostSession::Shutdown() {
  bool any = false;
  for (Plugin& plugin : plugins_) {
    if (!plugin.started) continue;
    plugin.started = false;
    any = true;
    const csSDK_int32 answer = CallEntry(plugin, ecSelShutdown, nullptr);
    if (answer != 0) ReportViolation("shut-down answered " + std::to_string(answer));
  }
  if (any) CheckNothingHeld();
}

void HostSession::CheckNothingHeld() {
  for (const auto& [suite, count] : held_suites_) {
    if (count == 0) continue;
    ReportViolation("the suite \"" + suite.first + "\" version " + std::to_string(suite.second) +
                    " was not released at shut-down");
  }
  held_suites_.clear();
  if (LiveBlocks() > 0) ReportViolation(std::to_string(LiveBlocks()) + " blocks of memory were not freed at shut-down");
}

void HostSession::CheckThread(const char* function) {
  if (std::this_thread::get_id() == main_thread_) return;
  ReportViolation(std::string(function) + " was called on another thread than the main thread");
}

const void* HostSession::Acquire(const char* name, csSDK_int32 version) {
  const void* suite = FindSuite(name, version);
  if (!suite) ReportViolation(std::string("there is no suite \"") + name + "\" version " + std::to_string(version));
  ++held_suites_[{name, version}];
  return suite;
}

void HostSession::Release(const char* name, csSDK_int32 version) {
  int& held = held_suites_[{name, version}];
  if (held == 0) {
    ReportViolation(std::string("the suite \"") + name + "\" version " + std::to_string(version) +
                    " was released without having been acquired");
  }
  --held;
}

const Sequence& HostSession::FindSequence(PrTimelineID timeline, const char* function) {
  if (timeline == kTimeline) return sequence_;
  ReportViolation(std::string(function) + " was called with another timeline than the one to export");
}

void HostSession::CheckTimeline(csSDK_int64 data, PrTimelineID timeline, const char* function) {
  FindSequence(timeline, function);
  if (data == reinterpret_cast<csSDK_int64>(this)) return;
  ReportViolation(std::string(function) + " was called with another handle than that of the timeline");
}

prSuiteError HostSession::Export(const ExportControllerExportRec& record) {
  std::array<std::string, 2> paths;
  const std::array<const prUTF16Char*, 2> texts{record.destinationPath, record.presetPath};
  for (size_t i = 0; i < texts.size(); ++i) {
    const auto path = texts[i] ? ReadUtf16(texts[i], EXPORT_CONTROLLER_TEXT_UNITS) : std::nullopt;
    if (!path || path->empty() || path->front() != '/') {
      ReportViolation(std::string(i == 0 ? "the destination" : "the preset") +
                      " is not a full path in UTF-16 of at most 255 units with a zero unit after it");
    }
    paths[i] = *path;
  }
  if (!current_export_) ReportViolation("an export was asked for outside of the call that exports a timeline");
  // Kept, as a nested export may come and go while the progress window lets the menu be used.
  ExportRecord* const asking = current_export_;
  asking->asked = true;
  const RenderResult result = RenderInto(paths[0], paths[1]);
  asking->render = result.outcome;
  if (result.outcome == RenderOutcome::kRendered) rendered_.push_back(result.file);
  if (listener_) listener_->RenderEnded(result);
  if (result.outcome == RenderOutcome::kRendered) return kSuiteSuccess;
  return result.outcome == RenderOutcome::kCancelled ? kSuiteCancelled : kSuiteFailed;
}

RenderResult HostSession::RenderInto(const std::string& destination, const std::string& preset_path) {
  try {
    const Preset preset = ReadPreset(preset_path);
    if (listener_) listener_->RenderStarted(destination, preset.name);
    const auto progress = [this](double done) { return !listener_ || listener_->RenderProgressed(done); };
    return Render(sequence_, preset, destination, progress, fault_);
  } catch (const std::exception& error) {
    RenderResult result;
    result.reason = error.what();
    return result;
  }
}

void HostSession::Raise(const ErrorEvent& event) {
  events_.push_back(event);
  if (current_export_ && event.type == kEventTypeError) current_export_->error_event = true;
  if (listener_) listener_->EventRaised(event);
}

}  // namespace orvane_host
