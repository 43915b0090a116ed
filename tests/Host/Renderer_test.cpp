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
TEST(Renderer, AFilmGivesTheSequenceItsShapeAndGetsSilence) {
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
}

}  // namespace
}  // namespace orvane_host
