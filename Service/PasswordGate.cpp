#include "PasswordGate.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace orvane_service {
namespace {

using std::chrono::steady_clock;

// How long wrong passwords are remembered, and of how many users and sessions.
constexpr std::chrono::minutes kMemory(10);
constexpr size_t kMaxRecords = 10000;
// Doubling ends here, long after the longest delay is reached.
constexpr int kMaxDoublings = 20;

}  // namespace

PasswordGate::Result PasswordGate::Try(const std::string& user, const std::string& session,
                                       const std::function<bool()>& check) {
  std::unique_lock<std::mutex> lock(mutex_);
  if (!busy_sessions_.insert(session).second) return Result::kTooMany;
  const auto free_session = [&] { busy_sessions_.erase(session); };
  const auto wrong_of = [](const auto& records, const std::string& name) {
    const auto record = records.find(name);
    return record == records.end() ? 0 : record->second.wrong;
  };
  if (!WaitForTurn(lock, wrong_of(users_, user) + wrong_of(sessions_, session))) {
    free_session();
    return Result::kTooMany;
  }
  lock.unlock();
  bool right = false;
  std::exception_ptr fault;
  try {
    right = check();
  } catch (...) {
    fault = std::current_exception();
  }
  lock.lock();
  checking_ = false;
  changed_.notify_all();
  if (!right && !fault) Hold(lock, user, session);
  free_session();
  if (fault) std::rethrow_exception(fault);
  return right ? Result::kRight : Result::kWrong;
}

void PasswordGate::Stop() {
  std::lock_guard<std::mutex> lock(mutex_);
  stopped_ = true;
  changed_.notify_all();
}

// Returns false if the attempt is not to be checked. Afterwards the caller is the one that checks.
bool PasswordGate::WaitForTurn(std::unique_lock<std::mutex>& lock, int wrong) {
  const auto better = [](const Attempt& a, const Attempt& b) {
    return std::make_pair(a.refused, a.wrong) < std::make_pair(b.refused, b.wrong);
  };
  const auto is_open = [](const Attempt& attempt) { return !attempt.refused; };
  const auto own = waiting_.insert(waiting_.end(), Attempt{wrong});
  if (static_cast<size_t>(std::count_if(waiting_.begin(), waiting_.end(), is_open)) > limits_.waiting) {
    // Of the worst, the one that has waited longest: its client may have gone already.
    const auto worst = std::max_element(waiting_.begin(), waiting_.end(), [](const Attempt& a, const Attempt& b) {
      return std::make_pair(!a.refused, a.wrong) < std::make_pair(!b.refused, b.wrong);
    });
    worst->refused = true;
    changed_.notify_all();
  }
  changed_.wait(lock, [&] {
    if (stopped_ || own->refused) return true;
    return !checking_ && std::min_element(waiting_.begin(), waiting_.end(), better) == own;
  });
  const bool may_check = !stopped_ && !own->refused;
  waiting_.erase(own);
  changed_.notify_all();
  checking_ = checking_ || may_check;
  return may_check;
}

void PasswordGate::Hold(std::unique_lock<std::mutex>& lock, const std::string& user, const std::string& session) {
  const Time now = steady_clock::now();
  ForgetOld(users_, now);
  ForgetOld(sessions_, now);
  Record& of_user = users_[user];
  Record& of_session = sessions_[session];
  if (of_user.last + kMemory < now) of_user.wrong = 0;
  ++of_user.wrong;
  const int doublings = std::min(of_session.wrong++, kMaxDoublings);
  of_session.last = now + std::min(limits_.first_delay * (1 << doublings), limits_.longest_delay);
  of_user.last = std::min(std::max(of_user.last, now) + limits_.user_spacing, now + limits_.longest_delay);
  const Time until = std::max(of_session.last, of_user.last);
  if (held_ == limits_.held) return;
  ++held_;
  changed_.wait_until(lock, until, [this] { return stopped_; });
  --held_;
}

void PasswordGate::ForgetOld(std::map<std::string, Record>& records, Time now) const {
  if (records.size() < kMaxRecords) return;
  for (auto record = records.begin(); record != records.end();) {
    const bool is_old = record->second.last + kMemory < now;
    record = is_old ? records.erase(record) : std::next(record);
  }
  // Under attack by ever new names there is nothing better to do than to begin again.
  if (records.size() >= kMaxRecords) records.clear();
}

}  // namespace orvane_service
