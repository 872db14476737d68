#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "folders.h"
#include "graphics/picture.h"

namespace {

// The seeds of the fuzz program, each of a kind of its own.
bool Read(const std::string& name, Picture& picture, PictureUse use = PictureUse::kPixels) {
  return ReadPicture(GameFolder() + "/../fuzz/picture_corpus", name, use, picture);
}

}  // namespace

// The lowest row comes first; neither a profile with its gamma nor a wrong checksum changes a pixel.
TEST(Picture, AllKindsGiveEightBitsOfRgba) {
  const struct {
    const char* name;
    int width, height;
    bool opaque;
    std::vector<int> pixels;
  } pictures[] = {{"profile", 1, 2, true, {4, 5, 6, 255, 1, 2, 3, 255}},
                  {"wrong_checksum", 1, 2, true, {4, 5, 6, 255, 1, 2, 3, 255}},
                  {"interlaced_16_bits", 2, 1, false, {1, 2, 3, 4, 5, 6, 7, 8}},
                  {"palette", 2, 1, false, {1, 2, 3, 128, 4, 5, 6, 255}}};
  for (const auto& expected : pictures) {
    Picture picture;
    ASSERT_TRUE(Read(expected.name, picture)) << expected.name;
    EXPECT_EQ(picture.width, expected.width) << expected.name;
    EXPECT_EQ(picture.height, expected.height) << expected.name;
    EXPECT_EQ(picture.opaque, expected.opaque) << expected.name;
    EXPECT_TRUE(std::equal(expected.pixels.begin(), expected.pixels.end(), picture.pixels.get())) << expected.name;
  }
}

// Lint and a game without a window only check pictures, and must say the same.
TEST(Picture, WhatIsDamagedOrClaimsTooMuchIsRefusedHoweverItIsRead) {
  for (const char* name : {"cut", "claims_too_much", "data_left_over", "../picture_corpus/palette", "", "nothing"})
    for (const PictureUse use : {PictureUse::kPixels, PictureUse::kCheck}) {
      Picture picture;
      EXPECT_FALSE(Read(name, picture, use)) << name;
    }
}
