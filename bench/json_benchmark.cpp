// How fast json::Deserialize is, measured beside nlohmann::json::parse in the same process.
//
// Two parts: a table of the ratios, for which both parsers read the same text in turns and the best time of each
// counts, and then Google Benchmark's own report, which takes its usual options. Building and freeing the tree both
// count. Build with the preset release: the ratios of an unoptimised build mean nothing.
#include "json.h"

#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace {

constexpr int kProjects = 20000;
constexpr int kRounds = 15;

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

double MillisecondsOf(const std::function<void()>& action) {
  const auto begin = std::chrono::steady_clock::now();
  action();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

struct Case {
  const char* name;
  std::string text;
};

const std::vector<Case>& Cases() {
  static const std::vector<Case> cases = {
      {"project list", ProjectList(kProjects, false)}, {"list of many members", ProjectList(kProjects, true)},
      {"1000 nested arrays", NestedArrays(1000)},      {"10000 nested arrays", NestedArrays(10000)},
      {"100000 nested arrays", NestedArrays(100000)},  {"1000 nested objects", NestedObjects(1000)},
      {"10000 nested objects", NestedObjects(10000)},  {"100000 nested objects", NestedObjects(100000)},
  };
  return cases;
}

void PrintRatios() {
  std::printf("%-24s %10s %12s %12s %8s %12s\n", "text", "bytes", "ours [ms]", "nlohmann", "ratio", "ours [ns/B]");
  for (const Case& item : Cases()) {
    double ours = 1e9;
    double theirs = 1e9;
    for (int round = 0; round < kRounds; ++round) {
      ours = std::min(ours, MillisecondsOf([&] { ParseOurs(item.text); }));
      theirs = std::min(theirs, MillisecondsOf([&] { ParseTheirs(item.text); }));
    }
    const double bytes = static_cast<double>(item.text.size());
    std::printf("%-24s %10zu %12.3f %12.3f %8.2f %12.1f\n", item.name, item.text.size(), ours, theirs, ours / theirs,
                ours * 1e6 / bytes);
  }
  std::printf("A ratio below 1 means that ours is faster.\n\n");
  std::fflush(stdout);
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
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  PrintRatios();
  RegisterBenchmarks();
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
