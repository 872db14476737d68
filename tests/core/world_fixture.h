// The fixture of tests that each play in a scene of their own.
#pragma once

#include <gtest/gtest.h>

#include "test_world.h"

class WorldFixture : public testing::Test {
 protected:
  TestWorld world;
};
