// The pictures of a run from the first screen to the podium, beside those that were looked at and found good. Renew
// them by tools/make_pictures.
#include <gtest/gtest.h>
#include <png.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <filesystem>

#include "core/scripted_platform.h"
#include "folders.h"
#include "graphics/gl.h"
#include "test_world.h"
#include "tools/film/film.h"
#include "tools/film/image.h"
#include "tools/film/offscreen_gl.h"

namespace {

namespace fs = std::filesystem;

constexpr int kBlock = 8;  // pixels each way; what differs by less than its place is the same to an eye
// Of 255, in the mean colour of a block; drivers of one kind stay below 1, a lost bubble is above 30.
constexpr double kTolerance = 12.0;

Image ReadPng(const fs::path& file) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  if (png_image_begin_read_from_file(&image, file.c_str()) == 0) return {};
  image.format = PNG_FORMAT_RGB;
  Image picture(static_cast<int>(image.width), static_cast<int>(image.height));
  png_image_finish_read(&image, nullptr, picture.rgb.data(), 0, nullptr);
  return picture;
}

// How different two colours look whose channels differ by so much: brightness counts most.
double Distance(const std::array<double, 3>& d) {
  const double brightness = 0.299 * d[0] + 0.587 * d[1] + 0.114 * d[2];
  return std::abs(brightness) + 0.25 * std::abs(d[0] - brightness) + 0.25 * std::abs(d[2] - brightness);
}

// The greatest distance of two blocks; `shown` becomes black where there is none.
double Compare(const Image& a, const Image& b, Image& shown) {
  double worst = 0.0;
  for (int top = 0; top < a.height; top += kBlock)
    for (int left = 0; left < a.width; left += kBlock) {
      std::array<double, 3> sum{};
      const int bottom = std::min(a.height, top + kBlock);
      const int right = std::min(a.width, left + kBlock);
      for (int y = top; y < bottom; ++y)
        for (int i = 3 * left; i < 3 * right; ++i) {
          sum[static_cast<std::size_t>(i % 3)] += a.Row(y)[i] - b.Row(y)[i];
          shown.Row(y)[i] = static_cast<std::uint8_t>(std::abs(a.Row(y)[i] - b.Row(y)[i]));
        }
      for (double& channel : sum) channel /= (bottom - top) * (right - left);
      worst = std::max(worst, Distance(sum));
    }
  return worst;
}

// What the build has made, and the levels as they are shipped, whatever has become of them beside the program.
void LinkShippedData(const fs::path& folder) {
  fs::create_directory(folder);
  for (const auto& level : fs::directory_iterator(GameFolder()))
    if (level.is_regular_file()) fs::create_symlink(level, folder / level.path().filename());
  for (const auto& made : fs::directory_iterator(BuildFolder()))
    if (const fs::path link = folder / made.path().filename(); !fs::exists(link)) fs::create_symlink(made, link);
}

}  // namespace

TEST(Golden, ARunLooksAsItDid) {
  TestWorld world;
  {
    OffscreenGl context;
    const std::string error = context.Open(64, 36);
    if (gl::DriverName().find("llvmpipe") == std::string::npos)
      GTEST_SKIP() << "only the software driver draws the same everywhere; here: " << error << gl::DriverName();
    ASSERT_EQ(gl::IsEs(), std::getenv("MESA_GL_VERSION_OVERRIDE") != nullptr) << context.GetContext();
  }
  const fs::path golden = fs::path(GameFolder()).parent_path() / "tests/golden";
  const fs::path left = fs::path(BuildFolder()) / "golden";
  LinkShippedData(fs::current_path() / "data");
  FilmOptions options;
  options.dataFolder = fs::current_path() / "data";
  options.boot = options.untilEnd = options.moments = true;
  options.inputFile = golden / "run.input";
  options.out = fs::current_path() / "seen";
  options.width = 480;
  options.height = 270;
  ASSERT_EQ(Film(options), 0);
  static ScriptedPlatform nothing;
  SetPlatform(nothing);
  int compared = 0;
  for (const auto& entry : fs::directory_iterator(golden)) {
    if (entry.path().extension() != ".png") continue;
    ++compared;
    const std::string name = entry.path().stem();
    const Image expected = ReadPng(entry.path());
    const Image seen = ReadPng(options.out + "/" + name + ".png");
    ASSERT_EQ(seen.rgb.size(), expected.rgb.size()) << name;
    Image difference = expected;
    const double distance = Compare(expected, seen, difference);
    RecordProperty(name, std::to_string(distance));
    if (distance <= kTolerance) continue;
    fs::create_directories(left);
    WritePng(left / (name + "-expected.png"), expected);
    WritePng(left / (name + "-seen.png"), seen);
    WritePng(left / (name + "-difference.png"), difference);
    ADD_FAILURE() << name << " differs by " << distance << " of 255 somewhere; see " << left;
  }
  EXPECT_GE(compared, 4);
}
