// A program that runs while a test acts on it.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <string>
#include <vector>

#include "ChildProcess.h"

/// Starts the program, from arguments[0], and ends it with the test. Everything that the test waits for must come
/// within 40 seconds.
class RunningProgram {
 public:
  explicit RunningProgram(const std::vector<std::string>& arguments) : process_(arguments) {}

  /// Reads what the program says until the check holds. Fails the test when the program ends before.
  template <class Check>
  void Until(const std::string& what, Check check) {
    while (!check()) {
      ASSERT_LT(std::chrono::steady_clock::now(), deadline_) << what << "\n" << output << errors;
      ASSERT_TRUE(process_.Read(50, output, errors)) << "ended before: " << what << "\n" << output << errors;
    }
  }

  void UntilItSays(const std::string& text) {
    Until(text, [&] { return output.find(text) != std::string::npos; });
  }

  void Signal(int number) { process_.Signal(number); }

  /// Waits for its end and returns the exit status.
  int End() {
    while (process_.Read(50, output, errors)) {
      if (std::chrono::steady_clock::now() < deadline_) continue;
      ADD_FAILURE() << "it does not end\n" << output << errors;
      process_.Signal(SIGKILL);
    }
    return process_.Wait();
  }

  /// What it has said so far.
  std::string output;
  std::string errors;

 private:
  orvane_host::ChildProcess process_;
  const std::chrono::steady_clock::time_point deadline_ = std::chrono::steady_clock::now() + std::chrono::seconds(40);
};
