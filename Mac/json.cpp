#include "json.h"

#include <limits>
#include <stdexcept>
#include <utility>

namespace json {

namespace {

/// How deep copying and freeing may call themselves before they put the rest of a branch aside: enough for every real
/// answer, and little enough for the smallest stack that a system gives a thread.
constexpr int kMaxRecursion = 100;

/// Truncates towards zero. C++ leaves it undefined what becomes of a number that does not fit: here it is the nearest
/// int, and 0 for NaN.
int ToNearestInt(double value) {
  if (value != value) return 0;
  if (value >= static_cast<double>(std::numeric_limits<int>::max())) return std::numeric_limits<int>::max();
  if (value <= static_cast<double>(std::numeric_limits<int>::min())) return std::numeric_limits<int>::min();
  return static_cast<int>(value);
}

/// One more level of a counter for the life of this object.
class Level {
 public:
  explicit Level(int& depth) : depth_(depth) { ++depth_; }
  ~Level() { --depth_; }
  Level(const Level&) = delete;
  Level& operator=(const Level&) = delete;

 private:
  int& depth_;
};

/// What a thread that frees a deep tree has put aside.
struct Release {
  int depth = 0;
  std::vector<Object> objects;
  std::vector<Array> arrays;
};

// Plain pointers: nothing is left to destroy when a thread ends or the plug-in is unloaded.
thread_local Release* activeRelease = nullptr;

}  // namespace

/// The copy of one tree. Branches that are too deep are put aside and copied from the top again. That is safe because
/// a value being copied stays where it is until the outermost copy is complete.
class TreeCopy {
 public:
  /// Copies the object or array of from.
  static void CopyContainer(Value& to, const Value& from) {
    if (active_ == nullptr) {
      TreeCopy copy;
      copy.Run(to, from);
    } else if (active_->depth_ < kMaxRecursion) {
      active_->CopyNow(to, from);
    } else {
      active_->pending_.emplace_back(&to, &from);
    }
  }

 private:
  TreeCopy() { active_ = this; }
  ~TreeCopy() { active_ = nullptr; }

  void Run(Value& to, const Value& from) {
    CopyNow(to, from);
    while (!pending_.empty()) {
      const auto [nextTo, nextFrom] = pending_.back();
      pending_.pop_back();
      CopyNow(*nextTo, *nextFrom);
    }
  }

  void CopyNow(Value& to, const Value& from) {
    Level level(depth_);
    if (from.mValueType == ObjectVal) {
      to.mObjectVal = Object(from.mObjectVal);
    } else {
      to.mArrayVal = Array(from.mArrayVal);
    }
  }

  static thread_local TreeCopy* active_;
  int depth_ = 0;
  std::vector<std::pair<Value*, const Value*>> pending_;
};

thread_local TreeCopy* TreeCopy::active_ = nullptr;

Object::Object(const Object& other) = default;
Object::Object(Object&& other) noexcept = default;

Object& Object::operator=(const Object& other) {
  // The other object may be a part of this one.
  if (this != &other) *this = Object(other);
  return *this;
}

Object& Object::operator=(Object&& other) noexcept {
  Map taken(std::move(other.mValues));
  mValues.swap(taken);
  return *this;
}

Value& Object::operator[](const std::string& key) {
  return mValues[key];
}
Value& Object::operator[](std::string&& key) {
  return mValues[std::move(key)];
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
  for (int i = 0; i < count; ++i) {
    if (!HasKey(keys[i])) return i;
  }
  return -1;
}

Array::Array(const Array& other) = default;
Array::Array(Array&& other) noexcept = default;

Array& Array::operator=(const Array& other) {
  // The other array may be a part of this one.
  if (this != &other) *this = Array(other);
  return *this;
}

Array& Array::operator=(Array&& other) noexcept {
  Vector taken(std::move(other.mValues));
  mValues.swap(taken);
  return *this;
}

void Array::push_back(const Value& value) {
  mValues.push_back(value);
}
void Array::push_back(Value&& value) {
  mValues.push_back(std::move(value));
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

Array::iterator Array::find(const Value& value) {
  iterator element = begin();
  while (element != end() && !(*element == value)) ++element;
  return element;
}

Array::const_iterator Array::find(const Value& value) const {
  const_iterator element = begin();
  while (element != end() && !(*element == value)) ++element;
  return element;
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
Value::Value(std::string&& value) : mValueType(StringVal), mStringVal(std::move(value)) {}
Value::Value(const Object& value) : mValueType(ObjectVal), mObjectVal(value) {}
Value::Value(Object&& value) : mValueType(ObjectVal), mObjectVal(std::move(value)) {}
Value::Value(const Array& value) : mValueType(ArrayVal), mArrayVal(value) {}
Value::Value(Array&& value) : mValueType(ArrayVal), mArrayVal(std::move(value)) {}

Value::Value(const Value& other) : mValueType(other.mValueType) {
  if (mValueType == StringVal) {
    mStringVal = other.mStringVal;
  } else if (mValueType == ObjectVal || mValueType == ArrayVal) {
    TreeCopy::CopyContainer(*this, other);
  } else {
    CopyScalar(other);
  }
}

Value::Value(Value&& other) noexcept : mValueType(other.mValueType) {
  if (mValueType == StringVal) {
    mStringVal.swap(other.mStringVal);
  } else if (mValueType == ObjectVal) {
    mObjectVal.mValues.swap(other.mObjectVal.mValues);
  } else if (mValueType == ArrayVal) {
    mArrayVal.mValues.swap(other.mArrayVal.mValues);
  } else {
    CopyScalar(other);
  }
}

Value& Value::operator=(const Value& other) {
  // Copied first, since the other value may be a part of this one.
  if (this != &other) *this = Value(other);
  return *this;
}

Value& Value::operator=(Value&& other) noexcept {
  if (this == &other) return *this;
  mValueType = other.mValueType;
  // The old content goes last: it may be what holds the other value.
  if (mValueType == StringVal) {
    mStringVal = std::move(other.mStringVal);
    other.mStringVal.clear();
  } else if (mValueType == ObjectVal) {
    mObjectVal = std::move(other.mObjectVal);
  } else if (mValueType == ArrayVal) {
    mArrayVal = std::move(other.mArrayVal);
  } else {
    CopyScalar(other);
  }
  return *this;
}

/// Takes over what a number or a bool holds, for the type that is set already.
void Value::CopyScalar(const Value& other) {
  switch (mValueType) {
    case IntVal:
      SetNumber(other.mIntVal);
      break;
    case FloatVal:
      // The double is not derived from the float: the two may differ.
      mFloatVal = other.mFloatVal;
      mDoubleVal = other.mDoubleVal;
      mIntVal = ToNearestInt(other.mFloatVal);
      break;
    case DoubleVal:
      SetNumber(other.mDoubleVal);
      break;
    case BoolVal:
      mBoolVal = other.mBoolVal;
      break;
    default:
      break;
  }
}

void Value::SetNumber(int value) {
  mIntVal = value;
  mFloatVal = static_cast<float>(value);
  mDoubleVal = value;
}

void Value::SetNumber(double value) {
  mIntVal = ToNearestInt(value);
  mFloatVal = static_cast<float>(value);
  mDoubleVal = value;
}

/// Frees object and array. Freeing calls itself for every level; what is too deep is left to the outermost call.
void Value::ReleaseNested() noexcept {
  if (activeRelease != nullptr) {
    if (activeRelease->depth < kMaxRecursion) {
      Level level(activeRelease->depth);
      if (mObjectVal.size() != 0) mObjectVal.Clear();
      if (mArrayVal.size() != 0) mArrayVal.Clear();
    } else {
      if (mObjectVal.size() != 0) activeRelease->objects.push_back(std::move(mObjectVal));
      if (mArrayVal.size() != 0) activeRelease->arrays.push_back(std::move(mArrayVal));
    }
    return;
  }
  Release release;
  activeRelease = &release;
  mObjectVal.Clear();
  mArrayVal.Clear();
  while (!release.objects.empty() || !release.arrays.empty()) {
    Object object;
    Array array;
    if (!release.objects.empty()) {
      object = std::move(release.objects.back());
      release.objects.pop_back();
    }
    if (!release.arrays.empty()) {
      array = std::move(release.arrays.back());
      release.arrays.pop_back();
    }
    object.Clear();
    array.Clear();
  }
  activeRelease = nullptr;
}

void Value::Require(bool condition, const char* message) {
  if (!condition) throw std::runtime_error(message);
}

size_t Value::size() const {
  if (mValueType == ObjectVal) return mObjectVal.size();
  return mValueType == ArrayVal ? mArrayVal.size() : 1;
}

int Value::ToInt() const {
  Require(IsNumeric(), "json mValueType==IsNumeric() required");
  return mIntVal;
}

float Value::ToFloat() const {
  Require(IsNumeric(), "json mValueType==IsNumeric() required");
  return mFloatVal;
}

double Value::ToDouble() const {
  Require(IsNumeric(), "json mValueType==IsNumeric() required");
  return mDoubleVal;
}

bool Value::ToBool() const {
  Require(mValueType == BoolVal, "json mValueType==BoolVal required");
  return mBoolVal;
}

const std::string& Value::ToString() const {
  Require(mValueType == StringVal, "json mValueType==StringVal required");
  return mStringVal;
}

Object Value::ToObject() const {
  Require(mValueType == ObjectVal, "json mValueType==ObjectVal required");
  return mObjectVal;
}

Array Value::ToArray() const {
  Require(mValueType == ArrayVal, "json mValueType==ArrayVal required");
  return mArrayVal;
}

Value& Value::operator[](size_t index) {
  Require(mValueType == ArrayVal, "json mValueType==ArrayVal required");
  return mArrayVal[index];
}

const Value& Value::operator[](size_t index) const {
  Require(mValueType == ArrayVal, "json mValueType==ArrayVal required");
  return mArrayVal[index];
}

Value& Value::operator[](const std::string& key) {
  Require(mValueType == ObjectVal, "json mValueType==ObjectVal required");
  return mObjectVal[key];
}

Value& Value::operator[](const char* key) {
  Require(mValueType == ObjectVal, "json mValueType==ObjectVal required");
  return mObjectVal[key];
}

const Value& Value::operator[](const std::string& key) const {
  Require(mValueType == ObjectVal, "json mValueType==ObjectVal required");
  return mObjectVal[key];
}

const Value& Value::operator[](const char* key) const {
  Require(mValueType == ObjectVal, "json mValueType==ObjectVal required");
  return mObjectVal[key];
}

bool Value::HasKey(const std::string& key) const {
  Require(mValueType == ObjectVal, "json mValueType==ObjectVal required");
  return mObjectVal.HasKey(key);
}

int Value::HasKeys(const std::vector<std::string>& keys) const {
  Require(mValueType == ObjectVal, "json mValueType==ObjectVal required");
  return mObjectVal.HasKeys(keys);
}

int Value::HasKeys(const char** keys, int count) const {
  Require(mValueType == ObjectVal, "json mValueType==ObjectVal required");
  return mObjectVal.HasKeys(keys, count);
}

}  // namespace json
