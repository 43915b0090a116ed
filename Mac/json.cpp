#include "json.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <utility>

namespace json {

namespace {

// Truncates towards zero. C++ leaves it undefined what becomes of a number that does not fit: here it is the nearest
// int, and 0 for NaN.
int ToNearestInt(double value) {
  if (value != value) return 0;
  if (value >= static_cast<double>(std::numeric_limits<int>::max())) return std::numeric_limits<int>::max();
  if (value <= static_cast<double>(std::numeric_limits<int>::min())) return std::numeric_limits<int>::min();
  return static_cast<int>(value);
}

void Require(bool condition, const char* type) {
  if (!condition) throw std::runtime_error(std::string("json mValueType==") + type + " required");
}

}  // namespace

Value& Object::operator[](const std::string& key) {
  return mValues[key];
}
Value& Object::operator[](const char* key) {
  return mValues[key];
}
const Value& Object::operator[](const std::string& key) const {
  return mValues.find(key)->second;
}
const Value& Object::operator[](const char* key) const {
  return mValues.find(key)->second;
}

Object::iterator Object::find(const std::string& key) {
  return mValues.find(key);
}
Object::const_iterator Object::find(const std::string& key) const {
  return mValues.find(key);
}
Object::iterator Object::begin() {
  return mValues.begin();
}
Object::iterator Object::end() {
  return mValues.end();
}
Object::const_iterator Object::begin() const {
  return mValues.begin();
}
Object::const_iterator Object::end() const {
  return mValues.end();
}

size_t Object::size() const {
  return mValues.size();
}

void Object::Clear() {
  mValues.clear();
}

bool Object::HasKey(const std::string& key) const {
  return find(key) != end();
}

int Object::HasKeys(const std::vector<std::string>& keys) const {
  for (size_t i = 0; i < keys.size(); ++i) {
    if (!HasKey(keys[i])) return static_cast<int>(i);
  }
  return -1;
}

int Object::HasKeys(const char** keys, int count) const {
  return HasKeys(std::vector<std::string>(keys, keys + count));
}

void Array::push_back(const Value& value) {
  mValues.push_back(value);
}
void Array::insert(size_t index, const Value& value) {
  mValues.insert(mValues.begin() + static_cast<Vector::difference_type>(index), value);
}

Value& Array::operator[](size_t index) {
  return mValues[index];
}
const Value& Array::operator[](size_t index) const {
  return mValues[index];
}

// std::find compares with the element on the left.
Array::iterator Array::find(const Value& value) {
  return std::find(begin(), end(), value);
}

Array::const_iterator Array::find(const Value& value) const {
  return std::find(begin(), end(), value);
}

bool Array::HasValue(const Value& value) const {
  return find(value) != end();
}

Array::iterator Array::begin() {
  return mValues.begin();
}
Array::iterator Array::end() {
  return mValues.end();
}
Array::const_iterator Array::begin() const {
  return mValues.begin();
}
Array::const_iterator Array::end() const {
  return mValues.end();
}

size_t Array::size() const {
  return mValues.size();
}

void Array::Clear() {
  mValues.clear();
}

Value::Value(int value) : mValueType(IntVal) {
  SetNumber(value);
}
Value::Value(double value) : mValueType(DoubleVal) {
  SetNumber(value);
}
Value::Value(bool value) : mValueType(BoolVal), mBoolVal(value) {}
Value::Value(const std::string& value) : mValueType(StringVal), mStringVal(value) {}
Value::Value(const Object& value) : mValueType(ObjectVal), mObjectVal(value) {}
Value::Value(const Array& value) : mValueType(ArrayVal), mArrayVal(value) {}

Value::Value(const Value& other) {
  // A list of what is left in place of recursion: a tree may be deeper than the thread's stack.
  CopyList nested;
  CopyLevel(other, nested);
  while (!nested.empty()) {
    const auto [to, from] = nested.back();
    nested.pop_back();
    to->CopyLevel(*from, nested);
  }
}

Value::Value(Value&& other) noexcept {
  *this = std::move(other);
}

Value& Value::operator=(const Value& other) {
  // Copied first, since the other value may be a part of this one.
  if (this != &other) *this = Value(other);
  return *this;
}

Value& Value::operator=(Value&& other) noexcept {
  mValueType = other.mValueType;
  // Each is taken out first, since the other value may be a part of what is replaced.
  if (mValueType == StringVal) {
    mStringVal = std::string(std::move(other.mStringVal));
  } else if (mValueType == ObjectVal) {
    mObjectVal = Object(std::move(other.mObjectVal));
  } else if (mValueType == ArrayVal) {
    mArrayVal = Array(std::move(other.mArrayVal));
  } else {
    CopyScalar(other);
  }
  return *this;
}

Value::~Value() {
  // Objects and arrays are taken out of a container before it is freed, so that freeing does not call itself.
  std::vector<Object> objects;
  std::vector<Array> arrays;
  const auto takeOut = [&objects, &arrays](Value& value) {
    if (value.mObjectVal.size() != 0) objects.push_back(std::move(value.mObjectVal));
    if (value.mArrayVal.size() != 0) arrays.push_back(std::move(value.mArrayVal));
  };
  takeOut(*this);
  while (!objects.empty() || !arrays.empty()) {
    if (!objects.empty()) {
      Object object = std::move(objects.back());
      objects.pop_back();
      for (auto& member : object) takeOut(member.second);
    } else {
      Array array = std::move(arrays.back());
      arrays.pop_back();
      for (Value& element : array) takeOut(element);
    }
  }
}

// Of an int, too: every int is a double.
void Value::SetNumber(double value) {
  mIntVal = ToNearestInt(value);
  mFloatVal = static_cast<float>(value);
  mDoubleVal = value;
}

// Takes over what a number or a bool holds, for the type that is set already.
void Value::CopyScalar(const Value& other) {
  if (mValueType == IntVal) {
    SetNumber(other.mIntVal);
  } else if (mValueType == FloatVal) {
    // The double is not derived from the float: the two may differ.
    mFloatVal = other.mFloatVal;
    mDoubleVal = other.mDoubleVal;
    mIntVal = ToNearestInt(other.mFloatVal);
  } else if (mValueType == DoubleVal) {
    SetNumber(other.mDoubleVal);
  } else if (mValueType == BoolVal) {
    mBoolVal = other.mBoolVal;
  }
}

// Copies into a new value. The members or elements become nulls, listed with the values that they are to copy.
void Value::CopyLevel(const Value& other, CopyList& nested) {
  mValueType = other.mValueType;
  if (mValueType == StringVal) {
    mStringVal = other.mStringVal;
  } else if (mValueType == ObjectVal) {
    for (const auto& member : other.mObjectVal) nested.emplace_back(&mObjectVal[member.first], &member.second);
  } else if (mValueType == ArrayVal) {
    // All of them first: adding moves those before.
    while (mArrayVal.size() != other.mArrayVal.size()) mArrayVal.push_back(Value());
    for (size_t i = 0; i < mArrayVal.size(); ++i) nested.emplace_back(&mArrayVal[i], &other.mArrayVal[i]);
  } else {
    CopyScalar(other);
  }
}

size_t Value::size() const {
  if (mValueType == ObjectVal) return mObjectVal.size();
  return mValueType == ArrayVal ? mArrayVal.size() : 1;
}

int Value::ToInt() const {
  Require(IsNumeric(), "IsNumeric()");
  return mIntVal;
}

float Value::ToFloat() const {
  Require(IsNumeric(), "IsNumeric()");
  return mFloatVal;
}

double Value::ToDouble() const {
  Require(IsNumeric(), "IsNumeric()");
  return mDoubleVal;
}

bool Value::ToBool() const {
  Require(mValueType == BoolVal, "BoolVal");
  return mBoolVal;
}

const std::string& Value::ToString() const {
  Require(mValueType == StringVal, "StringVal");
  return mStringVal;
}

Object Value::ToObject() const {
  Require(mValueType == ObjectVal, "ObjectVal");
  return mObjectVal;
}

Array Value::ToArray() const {
  Require(mValueType == ArrayVal, "ArrayVal");
  return mArrayVal;
}

Value& Value::operator[](size_t index) {
  Require(mValueType == ArrayVal, "ArrayVal");
  return mArrayVal[index];
}

const Value& Value::operator[](size_t index) const {
  Require(mValueType == ArrayVal, "ArrayVal");
  return mArrayVal[index];
}

Value& Value::operator[](const std::string& key) {
  Require(mValueType == ObjectVal, "ObjectVal");
  return mObjectVal[key];
}

Value& Value::operator[](const char* key) {
  Require(mValueType == ObjectVal, "ObjectVal");
  return mObjectVal[key];
}

const Value& Value::operator[](const std::string& key) const {
  Require(mValueType == ObjectVal, "ObjectVal");
  return mObjectVal[key];
}

const Value& Value::operator[](const char* key) const {
  Require(mValueType == ObjectVal, "ObjectVal");
  return mObjectVal[key];
}

bool Value::HasKey(const std::string& key) const {
  Require(mValueType == ObjectVal, "ObjectVal");
  return mObjectVal.HasKey(key);
}

int Value::HasKeys(const std::vector<std::string>& keys) const {
  Require(mValueType == ObjectVal, "ObjectVal");
  return mObjectVal.HasKeys(keys);
}

int Value::HasKeys(const char** keys, int count) const {
  Require(mValueType == ObjectVal, "ObjectVal");
  return mObjectVal.HasKeys(keys, count);
}

}  // namespace json
