#include "Figure.h"

#include <algorithm>
#include <cstdio>

namespace bench {

void Print(const Figure& figure) {
  std::printf("%s\t%s\t%s\t%s\t%s\t%s\t%s\n", figure.name.c_str(), figure.ours.c_str(), figure.other.c_str(),
              figure.value.c_str(), figure.wanted.c_str(), figure.met ? "met" : "MISSED", figure.remark.c_str());
  std::fflush(stdout);
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const size_t middle = values.size() / 2;
  return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

std::string Text(double number, int digits, const std::string& unit) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*f", digits, number);
  return unit.empty() ? text : text + (" " + unit);
}

}  // namespace bench
