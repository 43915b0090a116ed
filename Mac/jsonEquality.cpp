#include <utility>

#include "json.h"

namespace json {

// The comparison of two trees, with the pairs still to compare kept aside instead of recursion.
class Comparison {
 public:
  bool Run() {
    while (!pending_.empty()) {
      const auto [left, right] = pending_.back();
      pending_.pop_back();
      if (!Same(*left, *right)) return false;
    }
    return true;
  }

  void Add(const Value& left, const Value& right) { pending_.emplace_back(&left, &right); }

  // Each returns false when the two can be told apart without looking into their values.
  bool Add(const Object& left, const Object& right) {
    if (left.size() != right.size()) return false;
    auto other = right.begin();
    for (const auto& entry : left) {
      if (entry.first != other->first) return false;
      Add(entry.second, other->second);
      ++other;
    }
    return true;
  }
  bool Add(const Array& left, const Array& right) {
    if (left.size() != right.size()) return false;
    for (size_t i = 0; i < left.size(); ++i) Add(left[i], right[i]);
    return true;
  }

 private:
  bool Same(const Value& left, const Value& right) {
    if (left.mValueType != right.mValueType && !left.IsNumeric() && !right.IsNumeric()) return false;
    switch (left.mValueType) {
      case StringVal:
        return left.mStringVal == right.mStringVal;
      case IntVal:
      case FloatVal:
      case DoubleVal:
        return SameNumber(left, right);
      case ObjectVal:
        return Add(left.mObjectVal, right.mObjectVal);
      case ArrayVal:
        return Add(left.mArrayVal, right.mArrayVal);
      case BoolVal:
        return left.mBoolVal == right.mBoolVal;
      default:
        return true;
    }
  }

  // Compares in the more precise of the two types; int and float meet as floats.
  static bool SameNumber(const Value& left, const Value& right) {
    if (!right.IsNumeric()) return false;
    if (left.mValueType == IntVal && right.mValueType == IntVal) return left.mIntVal == right.mIntVal;
    if (left.mValueType == DoubleVal || right.mValueType == DoubleVal) return AsDouble(left) == AsDouble(right);
    return left.mFloatVal == right.mFloatVal;
  }
  // A float's double may be another number.
  static double AsDouble(const Value& value) {
    return value.mValueType == FloatVal ? static_cast<double>(value.mFloatVal) : value.mDoubleVal;
  }

  std::vector<std::pair<const Value*, const Value*>> pending_;
};

bool operator==(const Value& left, const Value& right) {
  Comparison comparison;
  comparison.Add(left, right);
  return comparison.Run();
}

bool operator==(const Object& left, const Object& right) {
  Comparison comparison;
  return comparison.Add(left, right) && comparison.Run();
}

bool operator==(const Array& left, const Array& right) {
  Comparison comparison;
  return comparison.Add(left, right) && comparison.Run();
}

}  // namespace json
