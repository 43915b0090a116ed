// A record with a fence of bytes on both sides, so that a plug-in that writes past its end is caught.
#pragma once

#include <algorithm>
#include <array>

namespace orvane_host {

/// T is a plain record. It starts filled with zeros.
template <class T>
class Fenced {
 public:
  Fenced() {
    before_.fill(kFence);
    after_.fill(kFence);
  }

  T& value() { return value_; }
  const T& value() const { return value_; }

  /// Whether nothing was written outside of the record.
  bool Intact() const {
    const auto untouched = [](unsigned char byte) { return byte == kFence; };
    return std::all_of(before_.begin(), before_.end(), untouched) &&
           std::all_of(after_.begin(), after_.end(), untouched);
  }

 private:
  static constexpr unsigned char kFence = 0xA5;

  // As wide as the text buffers, so that a whole buffer written one off still lands in a fence.
  std::array<unsigned char, 512> before_;
  T value_{};
  std::array<unsigned char, 512> after_;
};

}  // namespace orvane_host
