#include "Renderer.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "ChildProcess.h"
#include "Deployment.h"
#include "TemporaryFolder.h"

namespace orvane_host {
namespace {

using nlohmann::json;

json Probe(const std::string& path) {
  const ChildResult result = RunChild({"ffprobe", "-v", "error", "-show_streams", "-show_format", "-of", "json", path});
  return json::parse(result.output);
}

Preset ReadOwn(const std::string& name) {
  return ReadPreset(std::string(ORVANE_PRESET_DIR) + "/" + name);
}

Sequence ShortSequence(int width, int height, Rational rate) {
  Sequence sequence;
  sequence.width = width;
  sequence.height = height;
  sequence.rate = rate;
  sequence.seconds = 1;
  return sequence;
}

struct Encoding {
  const char* preset;
  int width, height;
  const char* profile;
  int level;
  Rational rate;
  const char* rate_text;
};

void ExpectEncoding(const RenderedFile& file, const Encoding& expected) {
  const json facts = Probe(file.path);
  const json& video = facts["streams"][0];
  const json& audio = facts["streams"][1];
  EXPECT_EQ(video["codec_name"], "h264");
  EXPECT_EQ(video["width"], expected.width);
  EXPECT_EQ(video["height"], expected.height);
  EXPECT_EQ(video["profile"], expected.profile);
  EXPECT_EQ(video["level"], expected.level);
  EXPECT_EQ(video["r_frame_rate"], expected.rate_text);
  EXPECT_EQ(audio["codec_name"], "aac");
  EXPECT_EQ(audio["sample_rate"], "48000");
  EXPECT_EQ(audio["channels"], 2);
  EXPECT_NEAR(std::stod(facts["format"]["duration"].get<std::string>()), 1, 0.1);
  EXPECT_EQ(facts["format"]["size"], std::to_string(file.bytes));
}

TEST(Renderer, EncodesAsThePresetSays) {
  const Encoding cases[] = {{ORVANE_HIGH_PRESET, 1920, 1080, "High", 41, {25, 1}, "25/1"},
                            {ORVANE_MEDIUM_PRESET, 1280, 720, "High", 31, {30000, 1001}, "30000/1001"},
                            {ORVANE_LOW_PRESET, 854, 480, "Main", 31, {24, 1}, "24/1"}};
  for (const Encoding& expected : cases) {
    SCOPED_TRACE(expected.preset);
    const TemporaryFolder folder;
    double last = -1;
    const Sequence sequence = ShortSequence(1000, 500, expected.rate);
    const RenderResult result = Render(sequence, ReadOwn(expected.preset), folder / "film.mp4", [&](double done) {
      EXPECT_GE(done, last);
      last = done;
      return true;
    });
    ASSERT_EQ(result.outcome, RenderOutcome::kRendered) << result.reason;
    EXPECT_GT(last, 0.9);
    ExpectEncoding(result.file, expected);
    // The index stands before the data, so that a browser can start to play.
    const std::string bytes = ReadFile(result.file.path);
    EXPECT_LT(bytes.find("moov"), bytes.find("mdat"));
  }
}

// A tall film without sound, with a name that FFmpeg could take for something else.
TEST(Renderer, FilmKeepsItsShapeAndGetsSilence) {
  const TemporaryFolder folder;
  const std::string film = folder / "ftp:tall %d.mkv";
  const ChildResult made = RunChild({"ffmpeg", "-nostdin", "-loglevel", "error", "-f", "lavfi", "-i",
                                     "color=white:size=200x400:rate=24", "-t", "1", "file:" + film});
  ASSERT_EQ(made.status, 0) << made.errors;
  SequenceWish wish;
  wish.media = film;
  const Sequence sequence = MakeSequence(wish);
  EXPECT_EQ(sequence.width, 200);
  EXPECT_EQ(sequence.height, 400);
  EXPECT_EQ(sequence.rate.numerator, 24);
  EXPECT_NEAR(sequence.seconds, 1, 0.05);
  EXPECT_FALSE(sequence.has_sound);

  const RenderResult result = Render(sequence, ReadOwn(ORVANE_LOW_PRESET), folder / "film.mp4", nullptr);
  ASSERT_EQ(result.outcome, RenderOutcome::kRendered) << result.reason;
  EXPECT_EQ(Probe(result.file.path)["streams"][1]["codec_name"], "aac");
  // One grey row of the first picture: 240 white pixels between the bars, of 854.
  const std::string row = RunChild({"ffmpeg", "-nostdin", "-loglevel", "error", "-i", result.file.path, "-frames:v",
                                    "1", "-vf", "format=gray,crop=854:1:0:240", "-f", "rawvideo", "pipe:1"})
                              .output;
  ASSERT_EQ(row.size(), 854U);
  const auto bright = std::count_if(row.begin(), row.end(), [](char c) { return static_cast<unsigned char>(c) > 128; });
  EXPECT_NEAR(static_cast<double>(bright), 240, 8);
}

TEST(Renderer, CancelAndFailureLeaveNothingAndHarmNothing) {
  const TemporaryFolder folder;
  const std::string destination = folder / "film.mp4";
  const Preset preset = ReadOwn(ORVANE_LOW_PRESET);
  Sequence endless = ShortSequence(640, 360, {25, 1});
  endless.seconds = 3600;
  WriteFile(destination, "earlier");
  int calls = 0;
  const auto cancel_later = [&](double) { return ++calls < 5; };
  EXPECT_EQ(Render(endless, preset, destination, cancel_later).outcome, RenderOutcome::kCancelled);
  EXPECT_EQ(calls, 5);
  const RenderResult failed = Render(endless, preset, destination, nullptr, RenderFault::kRender);
  EXPECT_EQ(failed.outcome, RenderOutcome::kFailed);
  EXPECT_NE(failed.reason.find("no-such-encoder"), std::string::npos) << failed.reason;
  EXPECT_EQ(folder.Count(), 1U);
  EXPECT_EQ(ReadFile(destination), "earlier");
}

}  // namespace
}  // namespace orvane_host
