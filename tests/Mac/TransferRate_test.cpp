#include "TransferRate.h"

#include <gtest/gtest.h>

namespace {

// What is said of a transfer that has gone on for that many seconds at a steady rate, ten looks a second.
std::string AfterSteady(double seconds, double rate, double total) {
  TransferRate transfer;
  for (int i = 0; i <= static_cast<int>(seconds * 10); ++i) transfer.Add(100 + i / 10.0, rate * i / 10);
  return transfer.Text(total);
}

}  // namespace

TEST(TransferRate, TellsRateAndRemainingTimeOnceTheyAreSteady) {
  EXPECT_EQ(TransferRate().Text(1e9), "");
  EXPECT_EQ(AfterSteady(2.9, 1e6, 1e9), "");
  EXPECT_EQ(AfterSteady(5, 2.5e6, 1e9), "2.5 MB/s, about 7 minutes left");
  EXPECT_EQ(AfterSteady(5, 2e5, 1e9), "200 kB/s, about 84 minutes left");
  EXPECT_EQ(AfterSteady(5, 1e5, 1e9), "100 kB/s, about 3 hours left");
  EXPECT_EQ(AfterSteady(5, 50e6, 1e9), "50.0 MB/s, less than a minute left");
  EXPECT_EQ(AfterSteady(5, 1e6, 65e6), "1.0 MB/s, about a minute left");
  EXPECT_EQ(AfterSteady(5, 999.4e3, 1e8), "999 kB/s, about 2 minutes left");
  EXPECT_EQ(AfterSteady(5, 999.6e3, 1e8), "1.0 MB/s, about 2 minutes left");
  EXPECT_EQ(AfterSteady(5, 499, 1e9), "") << "no kilobyte in a second";
  EXPECT_EQ(AfterSteady(5, 1e6, 5e6), "") << "everything is sent";
  EXPECT_EQ(AfterSteady(5, 0, 1e9), "") << "nothing moves";
}

TEST(TransferRate, FollowsAChangeOfSpeed) {
  TransferRate transfer;
  double done = 0;
  for (int second = 0; second < 60; ++second) transfer.Add(second, done += 10e6);
  for (int second = 60; second < 75; ++second) transfer.Add(second, done += 1e6);
  EXPECT_EQ(transfer.Text(done + 120e6), "1.0 MB/s, about 2 minutes left");
  EXPECT_EQ(transfer.SecondsWithoutBytes(), 0);
  // Nothing goes for a while: what is said stays, and how long that is.
  for (int second = 75; second < 90; ++second) transfer.Add(second, done);
  EXPECT_EQ(transfer.SecondsWithoutBytes(), 15);
  EXPECT_EQ(transfer.Text(done + 120e6), "1.0 MB/s, about 2 minutes left");
  transfer.Add(90, done += 1e6);
  EXPECT_EQ(transfer.Text(done + 120e6), "") << "the stall is no part of a rate";
  // The machine sleeps for a day.
  for (int second = 91; second < 95; ++second) transfer.Add(86400 + second, done += 1e6);
  EXPECT_EQ(transfer.Text(done + 120e6), "1.0 MB/s, about 2 minutes left");
}
