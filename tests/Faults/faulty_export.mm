// Exports with the built plug-in as one row of the table of faults asks, and reports what was seen. The row comes as
// JSON in the environment variable ORVANE_FAULT, the report goes as JSON into the file that it names. Beside what the
// person wishes (Person.h) it may hold "times" (how many exports), "seconds" (of film) and "keeps" (bool: the saved
// login stays as it was found).
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

#import "Controls.h"
#include "LocalTrust.h"
#import "Person.h"
#include "ProcessMemory.h"
#include "SavedItem.h"
#include "TemporaryFolder.h"
#include "WindowScript.h"

using namespace window_test;
using nlohmann::json;

namespace {

orvane_host::Sequence SmallSequence(double seconds) {
  orvane_host::Sequence sequence;
  sequence.width = 320;
  sequence.height = 180;
  sequence.seconds = seconds;
  return sequence;
}

// Exports as often as the row wants.
void Export(const json &row, orvane_host::HostSession &host, Person &person, json &seen) {
  for (int i = 0; i < row.value("times", 1); ++i) {
    @autoreleasepool {
      person.BeginExport();
      seen["answers"].push_back(host.ExportTimeline());
      while (!person.ExportIsOver()) SpinUntil([&person] { return person.ExportIsOver(); });
    }
    person.NoteLevels();
  }
}

void RunRow(const json &row, json &seen) {
  orvane_host::SetTrustedAuthority(row["authority"]);
  orvane_host::SetConnectPort(row["port"]);
  // Not before: GNUstep starts with no variable that is not UTF-8.
  if (row.value("no_path", false)) setenv("TMPDIR", (std::string(getenv("TMPDIR")) + "\xff").c_str(), 1);
  if (!row.value("keeps", false)) ForgetItem();
  if (row.contains("saved")) ASSERT_TRUE(SaveItem(ReadFile(row["saved"])));
  orvane_host::HostSession host(SmallSequence(row.value("seconds", 0.4)));
  host.Load(row["bundle"]);
  host.Startup();
  ResetPeakOfMemory();
  const long before = ProcessMemory("VmRSS");

  Person person(row, host, seen);
  std::atomic<bool> over(false);
  std::atomic<bool> looking(false);
  const auto look = [&] {
    looking = false;
    if (!over) person.Act();
  };
  RunWithScript(
      [&] {
        Export(row, host, person, seen);
        over = true;
      },
      [&](Script &actions) {
        for (int rounds = 0; !over; ++rounds) {
          if (!looking.exchange(true)) actions.Post(look);
          // A look that waits behind work which opened a modal window comes by way of this into that window's loop.
          if (rounds % 8 == 0) actions.Post([] {});
          std::this_thread::sleep_for(std::chrono::milliseconds(15));
        }
      });
  seen["modal"] = [NSApp modalWindow] != nil;
  for (NSWindow *window in [NSApp windows]) {
    if ([window isVisible]) seen["windows"].push_back([[window title] UTF8String]);
  }
  fputs("The host shuts down.\n", stderr);
  host.Shutdown();
  seen["growth"] = (ProcessMemory("VmHWM") - before) / 1024;
  for (const auto &event : host.Events()) seen["events"].push_back({event.type, event.title + ": " + event.text});
  seen["saved"] = SavedItem();
}

}  // namespace

TEST(FaultyExport, EndsInOrder) {
  const char *text = getenv("ORVANE_FAULT");
  const json row = json::parse(text ? text : "", nullptr, false);
  ASSERT_TRUE(row.is_object()) << "ORVANE_FAULT holds no row";
  json seen = {
      {"answers", json::array()}, {"alerts", json::array()}, {"events", json::array()}, {"windows", json::array()}};
  RunRow(row, seen);
  WriteFile(row["report"], seen.dump(-1, ' ', false, json::error_handler_t::replace));
}
