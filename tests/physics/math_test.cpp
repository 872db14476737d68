#include <gtest/gtest.h>

#include "physics/math/matrix34.h"
#include "physics/math/quaternion.h"

namespace {

TEST(Math, ZeroLengthsAndSingularMatricesStayAsTheyAre) {
  EXPECT_EQ(Normalised(Vec3{}), Vec3{});
  EXPECT_EQ(Normalised(Quaternion{0.0f, 0.0f, 0.0f, 0.0f}), Quaternion{});
  Matrix33 out;
  out.m[5] = 17.0f;
  EXPECT_FALSE(Invert({{1.0f, 2.0f, 3.0f, 2.0f, 4.0f, 6.0f, 0.0f, 0.0f, 1.0f}}, out));
  EXPECT_EQ(out.m[5], 17.0f);
  EXPECT_EQ(Inverted({Matrix33{} * 0.0f, {1.0f, 2.0f, 3.0f}}).translation, (Vec3{-1.0f, -2.0f, -3.0f}));
}

TEST(Math, TheInverseUndoesAnUnsymmetricMatrixAndTurnsAreCounterClockwise) {
  const Matrix33 a = {{2.0f, 1.0f, 0.0f, 0.0f, 1.0f, 3.0f, 1.0f, 0.0f, 4.0f}};
  Matrix33 inverse;
  ASSERT_TRUE(Invert(a, inverse));
  for (const Matrix33& product : {a * inverse, inverse * a})
    for (std::size_t i = 0; i < 9; ++i) EXPECT_NEAR(product.m[i], i % 4 == 0 ? 1.0f : 0.0f, 1e-6f) << i;
  EXPECT_EQ((a * Vec3{1.0f, 10.0f, 100.0f}), (Vec3{12.0f, 310.0f, 401.0f}));
  for (const Matrix33& quarter : {RotationAboutZ(90.0f), ToMatrix(QuaternionFromZ(kPi / 2.0f))})
    EXPECT_NEAR((quarter * Vec3{1.0f, 0.0f, 0.0f}).y, 1.0f, 1e-6f) << "counter-clockwise";
}

// Every component differs, so a swapped sign, a wrong side or a component updated too early shows.
TEST(Math, QuaternionIntegrationIsHalfTheProductWithThePureOneOnTheLeft) {
  const Quaternion q = AddScaled({1.0f, 2.0f, 3.0f, 4.0f}, {10.0f, 20.0f, 30.0f});
  EXPECT_EQ(q, (Quaternion{1.0f + 0.5f * -200.0f, 2.0f + 0.5f * (10.0f + 80.0f - 90.0f),
                           3.0f + 0.5f * (20.0f + 60.0f - 40.0f), 4.0f + 0.5f * (30.0f + 30.0f - 40.0f)}));
}

}  // namespace
