// One line of the benchmarks' table.
#pragma once

#include <string>
#include <vector>

namespace bench {

/// What was measured and how it compares. Texts are ready to be read, with their units.
struct Figure {
  std::string name;
  std::string ours;
  /// The counterpart, or what the measurement is to be seen against; empty when there is none.
  std::string other;
  std::string value;
  std::string wanted;
  bool met = false;
  /// Told beside the verdict.
  std::string remark;
};

/// Writes the figure to standard output as one line of fields that tabs separate, in the order of the members; the
/// verdict is "met" or "MISSED". scripts/bench makes the table of such lines.
void Print(const Figure& figure);

/// The middle one, or the mean of the two in the middle. There must be one at least.
double Median(std::vector<double> values);

/// The number with that many digits after the point, and the unit, if any, after a space.
std::string Text(double number, int digits, const std::string& unit = "");

}  // namespace bench
