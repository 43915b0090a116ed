#include "FileResponse.h"

#include <gtest/gtest.h>

namespace {

using orvane_service::ParseRange;
using orvane_service::RangeKind;
using orvane_service::RangeRequest;

TEST(FileResponseTest, RangesNeverReachBeyondTheFile) {
  // Sizes beyond 32 bits, and numbers at the edge of 64.
  const uint64_t size = 5000000000;
  for (const char* header : {"bytes=4999999999-", "bytes=4999999999-18446744073709551615", "bytes=-1"}) {
    const RangeRequest request = ParseRange(header, size);
    EXPECT_EQ(request.kind, RangeKind::kPart) << header;
    EXPECT_EQ(request.range.offset, size - 1) << header;
    EXPECT_EQ(request.range.length, 1u) << header;
  }
  for (const char* header : {"bytes=5000000000-", "bytes=-0", "bytes=18446744073709551615-"}) {
    EXPECT_EQ(ParseRange(header, size).kind, RangeKind::kNotSatisfiable) << header;
  }
  EXPECT_EQ(ParseRange("bytes=0-", 0).kind, RangeKind::kNotSatisfiable);
  EXPECT_EQ(ParseRange("bytes=-5", 0).kind, RangeKind::kNotSatisfiable);
}

}  // namespace
