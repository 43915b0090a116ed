#include "Renderer.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>

#include "ChildProcess.h"
#include "Deployment.h"
#include "TemporaryFolder.h"

namespace orvane_host {
namespace {

// What FFmpeg finds in the film, by names as in "streams.stream.0.codec_name"; texts stand in quotation marks.
std::map<std::string, std::string> Probe(const std::string& path) {
  const ChildResult result = RunChild({"ffprobe", "-v", "error", "-show_streams", "-show_format", "-of", "flat", path});
  std::istringstream lines(result.output);
  std::map<std::string, std::string> facts;
  for (std::string name, value; std::getline(lines, name, '=') && std::getline(lines, value);) facts[name] = value;
  return facts;
}

std::string Quoted(const std::string& text) {
  return '"' + text + '"';
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
  std::map<std::string, std::string> facts = Probe(file.path);
  EXPECT_EQ(facts["streams.stream.0.codec_name"], Quoted("h264"));
  EXPECT_EQ(facts["streams.stream.0.width"], std::to_string(expected.width));
  EXPECT_EQ(facts["streams.stream.0.height"], std::to_string(expected.height));
  EXPECT_EQ(facts["streams.stream.0.profile"], Quoted(expected.profile));
  EXPECT_EQ(facts["streams.stream.0.level"], std::to_string(expected.level));
  EXPECT_EQ(facts["streams.stream.0.r_frame_rate"], Quoted(expected.rate_text));
  EXPECT_EQ(facts["streams.stream.1.codec_name"], Quoted("aac"));
  EXPECT_EQ(facts["streams.stream.1.sample_rate"], Quoted("48000"));
  EXPECT_EQ(facts["streams.stream.1.channels"], "2");
  EXPECT_NEAR(std::stod(facts["format.duration"].substr(1)), 1, 0.1);
  EXPECT_EQ(facts["format.size"], Quoted(std::to_string(file.bytes)));
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
  EXPECT_EQ(Probe(result.file.path)["streams.stream.1.codec_name"], Quoted("aac"));
}

}  // namespace
}  // namespace orvane_host
