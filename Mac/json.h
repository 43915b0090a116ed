// The plug-in's JSON library: a value model, a lenient parser and a serializer.
//
// The three classes are value types: copying copies the whole tree, destroying frees it, and neither uses stack in
// proportion to the depth of the tree. Nothing is shared, so different values may be used on different threads.
// Strings are bytes, UTF-8 in practice. Sizes and indexes count elements from 0.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace json {

class Value;

/// What a Value holds. The numbers are fixed.
enum ValueType {
  NullVal = 0,  ///< null, and the result of a failed parse
  StringVal = 1,
  IntVal = 2,     ///< 32-bit signed integer
  FloatVal = 3,   ///< single precision; neither a constructor nor the parser makes one
  DoubleVal = 4,  ///< double precision
  ObjectVal = 5,
  ArrayVal = 6,
  BoolVal = 7,
};

/// Values by key, in ascending byte order of the keys.
class Object {
 public:
  // Both standard libraries in use allow a map of a type that is completed later.
  typedef std::map<std::string, Value> Map;
  typedef Map::iterator iterator;
  typedef Map::const_iterator const_iterator;

  /// The value under key. A missing key is added with a NullVal.
  Value& operator[](const std::string& key);
  Value& operator[](const char* key);

  /// The value under key, which must be present: this is not checked.
  const Value& operator[](const std::string& key) const;
  const Value& operator[](const char* key) const;

  /// The entry of key, or end().
  iterator find(const std::string& key);
  const_iterator find(const std::string& key) const;

  iterator begin();
  iterator end();
  const_iterator begin() const;
  const_iterator end() const;

  size_t size() const;

  /// Removes every entry.
  void Clear();

  bool HasKey(const std::string& key) const;

  /// The index of the first of the keys that is absent, or -1 when none is.
  int HasKeys(const std::vector<std::string>& keys) const;
  int HasKeys(const char** keys, int count) const;

 private:
  Map mValues;
};

/// Values in the order of insertion.
class Array {
 public:
  typedef std::vector<Value> Vector;
  typedef Vector::iterator iterator;
  typedef Vector::const_iterator const_iterator;

  void push_back(const Value& value);

  /// Inserts a copy before position index, which is at most size(): this is not checked.
  void insert(size_t index, const Value& value);

  /// The element at index, which must be below size(): this is not checked.
  Value& operator[](size_t index);
  const Value& operator[](size_t index) const;

  /// The first element e for which e == value, or end().
  iterator find(const Value& value);
  const_iterator find(const Value& value) const;

  /// Whether find() finds one.
  bool HasValue(const Value& value) const;

  iterator begin();
  iterator end();
  const_iterator begin() const;
  const_iterator end() const;

  size_t size() const;

  /// Removes every element.
  void Clear();

 private:
  Vector mValues;
};

/// One JSON value.
///
/// A value has room for every type at once. Only the member of the current type counts; what an earlier type left in
/// the others stays until the value is destroyed. A number is held as int, float and double in step, so that it can be
/// read as any of them: the int is truncated towards zero, one that does not fit becomes the nearest int, and NaN 0.
///
/// A read of the wrong type throws std::runtime_error with the message "json mValueType==<type> required", where the
/// type is one of IsNumeric(), BoolVal, StringVal, ObjectVal and ArrayVal, and changes nothing.
class Value {
 public:
  Value() = default;
  Value(int value);
  Value(double value);
  Value(bool value);
  Value(const std::string& value);
  Value(const Object& value);
  Value(const Array& value);
  /// A character pointer would otherwise turn into a bool.
  Value(const char*) = delete;

  Value(const Value& other);
  /// For values that are returned: the source keeps its type, and its string, object or array is left empty.
  Value(Value&& other) noexcept;
  /// Takes over type and content. The members of the other types stay as they are.
  Value& operator=(const Value& other);
  Value& operator=(Value&& other) noexcept;
  ~Value();

  ValueType GetType() const { return mValueType; }

  /// Whether this is an IntVal, FloatVal or DoubleVal.
  bool IsNumeric() const { return mValueType == IntVal || mValueType == FloatVal || mValueType == DoubleVal; }

  /// Makes this a NullVal and frees nothing.
  void Clear() { mValueType = NullVal; }

  /// The number of entries or elements; 1 for what is neither object nor array, NullVal included.
  size_t size() const;

  int ToInt() const;
  float ToFloat() const;
  double ToDouble() const;
  bool ToBool() const;
  const std::string& ToString() const;
  Object ToObject() const;
  Array ToArray() const;

  operator int() const { return ToInt(); }
  operator float() const { return ToFloat(); }
  operator double() const { return ToDouble(); }
  operator bool() const { return ToBool(); }
  operator std::string() const { return ToString(); }
  operator Object() const { return ToObject(); }
  operator Array() const { return ToArray(); }

  /// The element of an array at index, which must be below size(): this is not checked.
  Value& operator[](size_t index);
  const Value& operator[](size_t index) const;

  /// The value under a key of an object. A missing key is added with a NullVal.
  Value& operator[](const std::string& key);
  Value& operator[](const char* key);

  /// The value under a key of an object. The key must be present: this is not checked, ask HasKey() first.
  const Value& operator[](const std::string& key) const;
  const Value& operator[](const char* key) const;

  /// As the operations of Object.
  bool HasKey(const std::string& key) const;
  int HasKeys(const std::vector<std::string>& keys) const;
  int HasKeys(const char** keys, int count) const;

 protected:
  ValueType mValueType = NullVal;
  int mIntVal = 0;
  float mFloatVal = 0;
  double mDoubleVal = 0;
  std::string mStringVal;
  Object mObjectVal;
  Array mArrayVal;
  bool mBoolVal = false;

 private:
  friend class Comparison;
  friend class Writer;

  typedef std::vector<std::pair<Value*, const Value*>> CopyList;

  void SetNumber(double value);
  void CopyScalar(const Value& other);
  void CopyLevel(const Value& other, CopyList& nested);
};

/// Equality, deep. Numbers of different types are compared by value. The comparison goes by the left-hand type and,
/// when either side is a number, ignores the right-hand type otherwise: an empty string, an empty object, an empty
/// array, false and a NullVal on the left equal any number on the right, but not the other way round.
bool operator==(const Value& left, const Value& right);
bool operator==(const Object& left, const Object& right);
bool operator==(const Array& left, const Array& right);

/// Reads an object or an array. Returns a NullVal when the text is neither or is faulty.
///
/// Throws std::out_of_range when a nested bracket is never closed. Reading is lenient: text before a key is skipped, an
/// element null of an array is left out, a nested object or array that is faulty becomes a NullVal, and a string in an
/// array must hold no comma. An escape of a UTF-16 unit gives one byte, its low one. Keys are not unescaped. The
/// decimal point is that of the process's locale. Takes time in proportion to the length of the text.
Value Deserialize(const std::string& text);

/// The compact text of an object or array; an empty string for any other value. Nothing in keys and strings is escaped.
/// Numbers that are not ints have six digits after the point, which is "." in every locale. It calls itself for
/// each level. The plug-in writes no JSON with it: it completes the library.
std::string Serialize(const Value& value);

}  // namespace json
