// How fast passwords can be guessed. A wrong one is answered late, the later the more wrong ones the user and the
// session have had; a right one is answered as soon as it is known to be right.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <list>
#include <map>
#include <mutex>
#include <set>
#include <string>

namespace orvane_service {

struct GateLimits {
  /// What the first wrong password of a session costs. Each further one costs twice as much as the one before.
  std::chrono::milliseconds first_delay{250};
  /// What one costs at most. Less than a client waits for an answer.
  std::chrono::milliseconds longest_delay{8000};
  /// Between the answers to wrong passwords of one user, in whatever sessions, up to the longest delay.
  std::chrono::milliseconds user_spacing{250};
  /// Attempts that wait until a password can be checked; one check takes a tenth of a second.
  size_t waiting = 64;
  /// Answers that are held back at once. Each occupies a connection, so it must be far less than there are of those.
  size_t held = 200;
};

/// May be used by any thread.
class PasswordGate {
 public:
  enum class Result { kRight, kWrong, kTooMany };

  explicit PasswordGate(const GateLimits& limits = GateLimits()) : limits_(limits) {}

  /// Runs the check of a password, which tells whether it is right. The texts identify the user and the session; what
  /// they hold is up to the caller. One check runs at a time, first those of users and sessions with the fewest wrong
  /// passwords. kTooMany without a check when the session has an attempt under way, or when too many wait.
  Result Try(const std::string& user, const std::string& session, const std::function<bool()>& check);

  /// From now on nobody waits.
  void Stop();

 private:
  using Time = std::chrono::steady_clock::time_point;
  struct Record {
    int wrong = 0;
    /// When the last answer to a wrong one is due.
    Time last{};
  };
  struct Attempt {
    int wrong = 0;
    bool refused = false;
  };

  bool WaitForTurn(std::unique_lock<std::mutex>& lock, int wrong);
  void Hold(std::unique_lock<std::mutex>& lock, const std::string& user, const std::string& session);
  void ForgetOld(std::map<std::string, Record>& records, Time now) const;

  const GateLimits limits_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::map<std::string, Record> users_;
  std::map<std::string, Record> sessions_;
  std::set<std::string> busy_sessions_;
  std::list<Attempt> waiting_;
  bool checking_ = false;
  size_t held_ = 0;
  bool stopped_ = false;
};

}  // namespace orvane_service
