// How the time of json::Deserialize grows with the text. Reading and freeing both count.
//
// Prints one line for scripts/bench's table.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <limits>
#include <string>

#include "Figure.h"
#include "json.h"

namespace {

constexpr int kProjects = 20000;
constexpr int kLevels = 50000;
constexpr int kRounds = 15;

// Growth up to here counts as linear when the text is twice as long: quadratic time would be 4.
constexpr double kLinearGrowth = 3;

// An answer of the service with that many projects, of about 130 bytes each.
std::string ProjectList(int projects) {
  std::string text = R"({"root":{"status":"success","payload":[)";
  for (int i = 0; i < projects; ++i) {
    const std::string number = std::to_string(100000 + i);
    if (i != 0) text += ",";
    text += R"({"id":")" + number + R"(","project_name":"Project )" + number;
    text +=
        R"( \"Spring\", cut","owner":"editor@example.com","archived":false,"files":)" + std::to_string(i % 50) + "}";
  }
  return text + "]}}";
}

// Objects and arrays in turns.
std::string Nested(int levels) {
  std::string text;
  std::string end;
  for (int i = 0; i < levels; i += 2) {
    text += R"([{"a":)";
    end += "}]";
  }
  return text + "1" + end;
}

// The time that reading and freeing the text takes, in milliseconds.
double MillisecondsOf(const std::string& text) {
  const auto begin = std::chrono::steady_clock::now();
  if (json::Deserialize(text).GetType() == json::NullVal) std::fputs("the text was refused\n", stderr);
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

// The best times of a text and of one of twice its length, measured in turns.
struct Growth {
  double once = std::numeric_limits<double>::max();
  double twice = std::numeric_limits<double>::max();

  double Times() const { return twice / once; }
};

Growth Measure(const std::string& text, const std::string& doubled) {
  Growth growth;
  for (int round = 0; round < kRounds; ++round) {
    growth.once = std::min(growth.once, MillisecondsOf(text));
    growth.twice = std::min(growth.twice, MillisecondsOf(doubled));
  }
  return growth;
}

std::string Both(double length, double depth, const char* unit) {
  return bench::Text(length, 2) + " and " + bench::Text(depth, 2, unit);
}

void PrintFigure() {
  const Growth length = Measure(ProjectList(kProjects), ProjectList(2 * kProjects));
  const Growth depth = Measure(Nested(kLevels), Nested(2 * kLevels));
  bench::Print({"json, twice the length and twice the depth", Both(length.twice, depth.twice, "ms"),
                Both(length.once, depth.once, "ms"), Both(length.Times(), depth.Times(), "times"), "2 times, linear",
                std::max(length.Times(), depth.Times()) <= kLinearGrowth,
                "a list of " + std::to_string(2 * kProjects) + " projects and " + std::to_string(2 * kLevels) +
                    " levels, beside half of each; quadratic would be 4"});
}

}  // namespace

int main() {
  PrintFigure();
  return 0;
}
