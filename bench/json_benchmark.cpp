// How fast json::Deserialize is, measured beside nlohmann::json::parse in the same process.
//
// With --figures alone it prints lines for scripts/bench's table: both parsers read the same text in turns, and the
// best time of each counts. Otherwise it is a program of Google Benchmark, with its usual options. Building and freeing
// the tree both count. Build with the preset release: the ratios of an unoptimised build mean nothing.
#include "json.h"

#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "Figure.h"

namespace {

constexpr int kProjects = 20000;
constexpr int kRounds = 25;

/// Growth up to here counts as linear when the text is ten times as long.
constexpr double kLinearGrowth = 15;

/// An answer of the service with that many projects, of about 130 bytes each: two members with a long name, or more
/// members with a short one.
std::string ProjectList(int projects, bool manyMembers) {
  std::string text = R"({"root":{"status":"success","payload":[)";
  for (int i = 0; i < projects; ++i) {
    const std::string number = std::to_string(100000 + i);
    if (i != 0) text += ",";
    text += R"({"id":")" + number + R"(","project_name":"Project )" + number;
    if (manyMembers) {
      text +=
          R"( \"Spring\", cut","owner":"editor@example.com","archived":false,"files":)" + std::to_string(i % 50) + "}";
    } else {
      text += R"(: spring campaign, second cut with the corrected titles, colours and \"music\" for release"})";
    }
  }
  return text + "]}}";
}

std::string NestedArrays(int levels) {
  return std::string(static_cast<size_t>(levels), '[') + std::string(static_cast<size_t>(levels), ']');
}

std::string NestedObjects(int levels) {
  std::string text;
  for (int i = 0; i < levels; ++i) text += R"({"a":)";
  return text + "1" + std::string(static_cast<size_t>(levels), '}');
}

void ParseOurs(const std::string& text) {
  const json::Value value = json::Deserialize(text);
  if (value.GetType() == json::NullVal) std::fputs("the text was refused\n", stderr);
}

void ParseTheirs(const std::string& text) {
  const nlohmann::json value = nlohmann::json::parse(text);
  if (value.is_null()) std::fputs("the text was refused\n", stderr);
}

struct Case {
  const char* name;
  std::string text;
};

const std::vector<Case>& Cases() {
  static const std::vector<Case> cases = {
      {"project list", ProjectList(kProjects, false)}, {"list of many members", ProjectList(kProjects, true)},
      {"1,000 nested arrays", NestedArrays(1000)},     {"10,000 nested arrays", NestedArrays(10000)},
      {"100,000 nested arrays", NestedArrays(100000)}, {"1,000 nested objects", NestedObjects(1000)},
      {"10,000 nested objects", NestedObjects(10000)}, {"100,000 nested objects", NestedObjects(100000)},
  };
  return cases;
}

/// The time that reading and freeing the text takes, in milliseconds.
double MillisecondsOf(void (*parse)(const std::string&), const std::string& text) {
  const auto begin = std::chrono::steady_clock::now();
  parse(text);
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

/// The best times of both sides.
struct Times {
  double ours = std::numeric_limits<double>::max();
  double theirs = std::numeric_limits<double>::max();
};

Times Compare(const std::string& text) {
  Times best;
  for (int round = 0; round < kRounds; ++round) {
    best.ours = std::min(best.ours, MillisecondsOf(ParseOurs, text));
    best.theirs = std::min(best.theirs, MillisecondsOf(ParseTheirs, text));
  }
  return best;
}

void PrintRatios() {
  const std::string remark = "reading and freeing; a value takes " + std::to_string(sizeof(json::Value)) +
                             " bytes, theirs " + std::to_string(sizeof(nlohmann::json)) + " and what it points to";
  for (const Case& item : Cases()) {
    const Times times = Compare(item.text);
    const double ratio = times.ours / times.theirs;
    bench::Print({"json, " + std::string(item.name), bench::Text(times.ours, 3, "ms"),
                  bench::Text(times.theirs, 3, "ms"), bench::Text(ratio, 2), "1 at most", ratio <= 1, remark});
  }
}

/// How much longer a text of ten times the length takes. Linear time would be 10 times, quadratic 100.
void PrintGrowth(const char* name, const std::string& small, const std::string& large) {
  const Times before = Compare(small);
  const Times after = Compare(large);
  const double growth = after.ours / before.ours;
  bench::Print({name, bench::Text(growth, 1, "times"), bench::Text(after.theirs / before.theirs, 1, "times"),
                bench::Text(growth, 1, "times"), "10 times, linear", growth <= kLinearGrowth,
                "quadratic would be 100; the caches' limits add to both sides"});
}

void PrintFigures() {
  PrintRatios();
  PrintGrowth("json, 10 times the length", ProjectList(kProjects / 10, false), ProjectList(kProjects, false));
  PrintGrowth("json, 10 times the arrays' depth", NestedArrays(10000), NestedArrays(100000));
  PrintGrowth("json, 10 times the objects' depth", NestedObjects(10000), NestedObjects(100000));
}

void RegisterBenchmarks() {
  for (const Case& item : Cases()) {
    const std::string& text = item.text;
    const auto add = [&](const std::string& name, void (*parse)(const std::string&)) {
      benchmark::RegisterBenchmark((name + "/" + item.name).c_str(), [&text, parse](benchmark::State& state) {
        for (auto _ : state) parse(text);
        state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
      })->Unit(benchmark::kMillisecond);
    };
    add("Deserialize", ParseOurs);
    add("nlohmann", ParseTheirs);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && std::strcmp(argv[1], "--figures") == 0) {
    PrintFigures();
    return 0;
  }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  RegisterBenchmarks();
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
