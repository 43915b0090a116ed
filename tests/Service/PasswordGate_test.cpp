#include "PasswordGate.h"

#include <thread>

#include "RunningService.h"

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

class PasswordGateTest : public RunningService {
 protected:
  void SetUp() override {
    options_.passwords.first_delay = milliseconds(300);
    options_.passwords.user_spacing = milliseconds(300);
    options_.passwords.longest_delay = milliseconds(3000);
    RunningService::SetUp();
  }

  std::string Key() const { return client_.Get(Url("acme", "/api/prjacc/prjacc")).Root().value("auth_key", ""); }

  // Tries a password and returns how long the answer took.
  milliseconds Try(const std::string& key, const std::string& password, int status) const {
    const auto begin = steady_clock::now();
    const std::string body = "auth_key=" + key + "&username=editor&password=" + password;
    EXPECT_EQ(client_.Post(Url("acme", "/api/prjacc/prjacc"), body).status, status);
    return std::chrono::duration_cast<milliseconds>(steady_clock::now() - begin);
  }
};

TEST_F(PasswordGateTest, WrongPasswordsOfASessionTakeEverLongerAndARightOneDoesNot) {
  const std::string key = Key();
  for (int delay : {300, 600, 1200}) EXPECT_GE(Try(key, "wrong", 403).count(), delay);
  EXPECT_LT(Try(key, kPassword, 200).count(), 1200);
}

TEST_F(PasswordGateTest, ASessionTriesOnePasswordAtATime) {
  const std::string key = Key();
  Try(key, "wrong", 403);
  Try(key, "wrong", 403);
  // The next wrong one is answered after more than a second; of two, only one is tried.
  const auto status = [&] {
    const std::string body = "auth_key=" + key + "&username=nobody&password=x";
    return client_.Post(Url("acme", "/api/prjacc/prjacc"), body).status;
  };
  int others = 0;
  std::thread other([&] { others = status(); });
  const int own = status();
  other.join();
  EXPECT_EQ(own + others, 403 + 429);
}

TEST_F(PasswordGateTest, GuessingInManySessionsIsSlowAndStopsNobody) {
  std::atomic<bool> stop{false};
  std::atomic<int> guesses{0};
  std::vector<std::thread> guessers;
  for (int i = 0; i < 6; ++i) {
    guessers.emplace_back([&] {
      while (!stop) {
        Try(Key(), "wrong", 403);
        ++guesses;
      }
    });
  }
  EXPECT_TRUE(Eventually([&] { return guesses >= 6; }));
  // All of them have an answer to wait for now.
  const int before = guesses;
  const auto end = steady_clock::now() + std::chrono::seconds(3);
  while (steady_clock::now() < end) {
    EXPECT_LT(Try(Key(), kPassword, 200).count(), 5000);
    std::this_thread::sleep_for(milliseconds(200));
  }
  const int during = guesses - before;
  stop = true;
  for (std::thread& guesser : guessers) guesser.join();
  // Each guesses in sessions of its own, but of the user.
  EXPECT_LT(during, 3000 / 300 + 7);
}

}  // namespace
