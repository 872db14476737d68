// The arena of bouncing bodies that the physics is measured on, and the way it is measured. Numbers come from a fixed
// random sequence in a fixed order of draws, so that other engines can be given the very same arena. Lengths in world
// units, angles in radians, speeds in units per second.
#pragma once

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string_view>
#include <vector>

namespace bench {

inline constexpr float kStep = 1.0f / 360.0f;  ///< seconds a sub-step integrates
inline constexpr int kStepsPerFrame = 15;
inline constexpr float kTopSpeed = 13.0f;

struct Mover {
  bool isCircle;
  float radius;        ///< circles only
  float halfX, halfY;  ///< boxes only
  float x, y, angle;
  float velocityX, velocityY;
  /// Radius of the circle about the centre that holds the shape.
  float Reach() const { return isCircle ? radius : std::hypot(halfX, halfY); }
};

struct Obstacle {
  float x, y, halfX, halfY;
};

struct Arena {
  float width, height;
  std::vector<Obstacle> obstacles;  ///< twenty blocks, then the four walls
  std::vector<Mover> movers;
};

enum class ArenaSize {
  kScaled,  ///< grows with the number of movers, so that their density stays
  kFixed,   ///< 32 x 22 for any number
};

/// Marsaglia's 32-bit xorshift with the shifts 13, 17, 5.
class Xorshift {
 public:
  float Between(float low, float high) {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 17;
    state_ ^= state_ << 5;
    const float unit = static_cast<float>(state_ >> 8) / 16777216.0f;
    return low + (high - low) * unit;
  }

 private:
  std::uint32_t state_ = 0x9E3779B9u;
};

namespace detail {

constexpr int kColumns = 5;
constexpr int kRows = 4;

inline void AddObstacles(Arena& arena, Xorshift& random) {
  for (int row = 0; row < kRows; ++row) {
    for (int column = 0; column < kColumns; ++column) {
      Obstacle block;
      block.x = ((static_cast<float>(column) + 0.5f) / kColumns - 0.5f) * arena.width + random.Between(-0.3f, 0.3f);
      block.y = ((static_cast<float>(row) + 0.5f) / kRows - 0.5f) * arena.height + random.Between(-0.3f, 0.3f);
      block.halfX = random.Between(0.4f, 0.8f);
      block.halfY = random.Between(0.3f, 0.6f);
      arena.obstacles.push_back(block);
    }
  }
  const float x = arena.width / 2.0f;
  const float y = arena.height / 2.0f;
  arena.obstacles.push_back({0.0f, y + 1.0f, x + 2.0f, 1.0f});
  arena.obstacles.push_back({0.0f, -y - 1.0f, x + 2.0f, 1.0f});
  arena.obstacles.push_back({x + 1.0f, 0.0f, 1.0f, y + 2.0f});
  arena.obstacles.push_back({-x - 1.0f, 0.0f, 1.0f, y + 2.0f});
}

inline bool IsFree(const Arena& arena, const Mover& candidate) {
  const float reach = candidate.Reach();
  for (int i = 0; i < kColumns * kRows; ++i) {
    const Obstacle& block = arena.obstacles[static_cast<std::size_t>(i)];
    const bool clear =
        std::abs(candidate.x - block.x) > reach + block.halfX || std::abs(candidate.y - block.y) > reach + block.halfY;
    if (!clear) return false;
  }
  return std::all_of(arena.movers.begin(), arena.movers.end(), [&](const Mover& other) {
    const float apart = reach + other.Reach();
    const float dx = candidate.x - other.x;
    const float dy = candidate.y - other.y;
    return dx * dx + dy * dy > apart * apart;
  });
}

// Every third one is a box. All of a mover's numbers are drawn whatever its shape, so that the sequence does not shift.
inline Mover DrawMover(bool isCircle, Xorshift& random) {
  Mover mover = {};
  mover.isCircle = isCircle;
  mover.radius = random.Between(0.3f, 0.5f);
  mover.halfX = random.Between(0.35f, 0.45f);
  mover.halfY = random.Between(0.35f, 0.45f);
  const float heading = random.Between(0.0f, 6.2831853f);
  const float speed = random.Between(0.0f, kTopSpeed);
  mover.angle = isCircle ? 0.0f : random.Between(0.0f, 6.2831853f);
  mover.velocityX = speed * std::cos(heading);
  mover.velocityY = speed * std::sin(heading);
  return mover;
}

// Up to 200 places are tried; a mover that finds none is given up and the next one drawn.
inline bool FindPlace(const Arena& arena, Mover& mover, Xorshift& random) {
  const float reach = mover.Reach();
  for (int attempt = 0; attempt < 200; ++attempt) {
    mover.x = random.Between(-arena.width / 2.0f + reach, arena.width / 2.0f - reach);
    mover.y = random.Between(-arena.height / 2.0f + reach, arena.height / 2.0f - reach);
    if (IsFree(arena, mover)) return true;
  }
  return false;
}

}  // namespace detail

/// An arena with `count` movers, none of which touches anything.
inline Arena MakeArena(int count, ArenaSize size) {
  const float scale = size == ArenaSize::kFixed ? 1.0f : std::sqrt(static_cast<float>(count) / 64.0f);
  Arena arena = {32.0f * scale, 22.0f * scale, {}, {}};
  Xorshift random;
  detail::AddObstacles(arena, random);
  while (arena.movers.size() < static_cast<std::size_t>(count)) {
    Mover mover = detail::DrawMover(arena.movers.size() % 3 != 2, random);
    if (detail::FindPlace(arena, mover, random)) arena.movers.push_back(mover);
  }
  return arena;
}

/// What a world held after the step just made.
struct Census {
  double candidatePairs = 0.0;
  double contacts = 0.0;
};

/// Times a world frame by frame after a warm-up and prints one tab-separated row: engine, setting, arena, movers;
/// nanoseconds a step (median, 10th and 90th percentile), median a step and mover; candidate pairs and contacts a step;
/// ratio of the root mean square speed to that at the start. World offers Step(), MeanSquareSpeed() and Count().
template <class World>
void MeasureAndPrint(World& world, std::string_view setting, ArenaSize size, int count) {
  using Clock = std::chrono::steady_clock;
  constexpr int kWarmFrames = 30;
  const int frames = count <= 256 ? 150 : count <= 1024 ? 30 : 10;
  const double startSpeed = world.MeanSquareSpeed();
  for (int i = 0; i < kWarmFrames * kStepsPerFrame; ++i) world.Step();

  std::vector<double> times;  // nanoseconds a step, one entry a frame
  Census sum;
  for (int frame = 0; frame < frames; ++frame) {
    const auto start = Clock::now();
    for (int i = 0; i < kStepsPerFrame; ++i) world.Step();
    times.push_back(std::chrono::duration<double, std::nano>(Clock::now() - start).count() / kStepsPerFrame);
    const Census census = world.Count();
    sum.candidatePairs += census.candidatePairs;
    sum.contacts += census.contacts;
  }
  std::sort(times.begin(), times.end());
  const auto quantile = [&](double share) {
    return times[static_cast<std::size_t>(share * static_cast<double>(times.size() - 1))];
  };
  std::printf("brinewhirl\t%.*s\t%s\t%d\t%.0f\t%.0f\t%.0f\t%.1f\t%.1f\t%.2f\t%.2f\n", static_cast<int>(setting.size()),
              setting.data(), size == ArenaSize::kFixed ? "fixed" : "scaled", count, quantile(0.5), quantile(0.1),
              quantile(0.9), quantile(0.5) / count, sum.candidatePairs / frames, sum.contacts / frames,
              std::sqrt(world.MeanSquareSpeed() / startSpeed));
  std::fflush(stdout);
}

}  // namespace bench
