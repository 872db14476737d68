// The quadtree against a plain one written from its rules, without pruning, tight boxes or kept storage.
#include "physics/broad_phase.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <set>

#include "allocation_counter.h"
#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/random.h"
#include "core/transform.h"
#include "physics/box_collider.h"
#include "physics/primitive_assemblage.h"
#include "physics/sphere_collider.h"
#include "physics/step.h"
#include "test_world.h"

using GalePhysics::BoxCollider;
using GalePhysics::BroadPhase;
using GalePhysics::Collider;
using GalePhysics::Contact;
using GalePhysics::Findings;
using GalePhysics::PrimitiveAssemblage;
using GalePhysics::ShapeListing;
using GalePhysics::SphereCollider;

namespace {

struct Entry {
  unsigned mask;
  const Collider* collider;
};

const Vec3& PlaceOf(const Entry& entry) { return entry.collider->owner->GetTransform().position; }

std::vector<Entry> AllEntries() {
  std::vector<Entry> entries;
  for (const auto* shape : ShapeListing<BoxCollider>::List()) entries.push_back({0, shape});
  for (const auto* shape : ShapeListing<SphereCollider>::List()) entries.push_back({0, shape});
  for (const auto* shape : ShapeListing<PrimitiveAssemblage>::List()) entries.push_back({0, shape});
  return entries;
}

void TestPair(const Entry& a, const Entry& b, Findings& findings) {
  if (a.collider->collisionGroup == 0 && b.collider->collisionGroup == 0) return;
  const float reach = a.collider->broadPhaseSize + b.collider->broadPhaseSize;
  const Vec3 apart = PlaceOf(a) - PlaceOf(b);
  if (std::abs(apart.x) <= reach && std::abs(apart.y) <= reach) Collide(*a.collider, *b.collider, findings);
}

void Node(std::vector<Entry> entries, unsigned depth, float cx, float cy, float hx, float hy, Findings& findings) {
  std::vector<Entry> lists[4];
  for (Entry& entry : entries) {
    const Vec3& p = PlaceOf(entry);
    const float r = entry.collider->broadPhaseSize;
    for (unsigned q = 0; q < 4; ++q) {
      const bool inX = q < 2 ? p.x + r >= cx : p.x - r <= cx;
      const bool inY = q % 2 == 0 ? p.y + r >= cy : p.y - r <= cy;
      if (!inX || !inY) continue;
      lists[q].push_back(entry);
      if (4 * depth + q < 16) entry.mask |= 1u << (4 * depth + q);
    }
  }
  for (unsigned q = 0; q < 4; ++q) {
    const auto& list = lists[q];
    if (list.size() >= 10 && depth < 4) {
      Node(list, depth + 1, q < 2 ? cx + hx / 2 : cx - hx / 2, q % 2 == 0 ? cy + hy / 2 : cy - hy / 2, hx / 2, hy / 2,
           findings);
      continue;
    }
    for (std::size_t i = 0; i < list.size(); ++i)
      for (std::size_t j = i + 1; j < list.size(); ++j)
        if ((list[i].mask & list[j].mask) == 0) TestPair(list[i], list[j], findings);
  }
}

Findings Reference() {
  Vec3 low;
  Vec3 high;
  for (const auto& object : Objects().GetObjects()) {
    const Vec3& p = PositionOf(*object);
    low = {std::min(low.x, p.x), std::min(low.y, p.y), 0.0f};
    high = {std::max(high.x, p.x), std::max(high.y, p.y), 0.0f};
  }
  Findings findings;
  Node(AllEntries(), 0, (high.x + low.x) / 2, (high.y + low.y) / 2, (high.x - low.x) / 2, (high.y - low.y) / 2,
       findings);
  return findings;
}

using Pairs = std::set<std::pair<const GameObject*, const GameObject*>>;

Pairs PairsOf(const Findings& findings) {
  Pairs pairs;
  for (const Contact& contact : findings.contacts) pairs.insert(std::minmax(contact.firstOwner, contact.secondOwner));
  for (const auto& [a, b] : findings.overlaps)
    pairs.insert(std::minmax(static_cast<const GameObject*>(a), static_cast<const GameObject*>(b)));
  return pairs;
}

bool Same(const Contact& a, const Contact& b) {
  return a.first == b.first && a.second == b.second && a.firstOwner == b.firstOwner && a.secondOwner == b.secondOwner &&
         a.normal == b.normal && a.point == b.point && a.penetration == b.penetration && a.restitution == b.restitution;
}

// Random shapes within `spread` of a point: spheres, boxes in every turn, ghosts, group 0, sizes that occur twice.
void Scatter(TestWorld& world, std::mt19937& random, int count, float spread, const Vec3& middle) {
  std::uniform_real_distribution<float> unit(-1.0f, 1.0f);
  for (int i = 0; i < count; ++i) {
    BodyOptions options;
    options.ghost = random() % 8 == 0;
    options.group = static_cast<std::uint32_t>(random() % 3);
    options.locked = random() % 2 == 0;
    options.velocity = {unit(random) * 5.0f, unit(random) * 5.0f, 0.0f};
    options.angularVelocity.z = unit(random) * 3.0f;
    options.inverseMass = random() % 4 == 0 ? 0.0f : 1.0f;
    options.restitution = 0.5f;
    options.radius = random() % 2 == 0 ? 0.5f : 0.05f + std::abs(unit(random));
    options.halfExtents = {random() % 2 == 0 ? 0.5f : 0.1f + std::abs(unit(random)) * 2.0f,
                           random() % 2 == 0 ? 0.5f : 0.1f + std::abs(unit(random)), random() % 4 == 0 ? 0.5f : 0.0f};
    options.angle = random() % 2 == 0 ? 0.0f : unit(random) * kPi;
    const Vec3 place = middle + Vec3{unit(random) * spread, unit(random) * spread, 0.0f};
    auto& object = random() % 2 == 0 ? world.AddSphere("sphere", place, options) : world.AddBox("box", place, options);
    // A damaged file may tilt or stretch an object.
    if (random() % 8 != 0) continue;
    object.GetTransform().orientation = {1.0f + 0.3f * unit(random), 0.3f * unit(random), 0.0f, unit(random)};
    if (random() % 2 == 0) object.GetTransform().orientation.i = 0.0f;
    object.GetTransform().Rebuild();
  }
  auto& whole = world.Add("whole", middle + Vec3{spread / 2.0f, 0.0f, 0.0f});
  auto& parts = whole.Insert(std::make_unique<PrimitiveAssemblage>());
  whole.AddComponent("RigidBody");
  parts.AddBoxPart({2.0f, 1.0f, 0.0f}, {1.0f, 1.0f, 0.0f}, 30.0f);
}

// Adds the number of contacts to `total`.
void ExpectLikeReference(BroadPhase& broadPhase, const char* scene, std::size_t& total) {
  Findings found;
  broadPhase.Detect(Objects().GetObjects(), found);
  const Findings expected = Reference();
  total += found.contacts.size();
  EXPECT_EQ(found.overlaps, expected.overlaps) << scene;
  ASSERT_EQ(found.contacts.size(), expected.contacts.size()) << scene;
  for (std::size_t i = 0; i < found.contacts.size(); ++i)
    ASSERT_TRUE(Same(found.contacts[i], expected.contacts[i])) << scene << ", contact " << i;

  Findings everyPair;
  const auto entries = AllEntries();
  for (std::size_t i = 0; i < entries.size(); ++i)
    for (std::size_t j = i + 1; j < entries.size(); ++j) TestPair(entries[i], entries[j], everyPair);
  EXPECT_EQ(PairsOf(found), PairsOf(everyPair)) << scene << ": a pair that touches was lost";
}

TEST(BroadPhase, FindsWhatThePlainQuadtreeFindsInTheSameOrder) {
  BroadPhase broadPhase;  // one for all scenes: what it keeps must not show
  std::size_t contacts = 0;
  for (unsigned seed = 1; seed <= 12; ++seed) {
    TestWorld world;
    std::mt19937 random(seed);
    const float spread = seed % 3 == 0 ? 2.0f : 12.0f;
    Scatter(world, random, 20 + static_cast<int>(seed) * 8, spread, {seed % 2 == 0 ? 30.0f : 0.0f, -5.0f, 0.0f});
    for (int step = 0; step < 5; ++step) {
      ExpectLikeReference(broadPhase, "scattered", contacts);
      world.Step();
    }
  }
  EXPECT_GT(contacts, 2000u);
}

TEST(BroadPhase, FindsTheSameInAPileOfThreeHundred) {
  BroadPhase broadPhase;
  TestWorld world;
  std::mt19937 random(99);
  Scatter(world, random, 300, 1.5f, {});
  std::size_t contacts = 0;
  ExpectLikeReference(broadPhase, "pile", contacts);
  EXPECT_GT(contacts, 10000u);
}

TEST(BroadPhase, TestsAPairAcrossTheMiddleOnceAndManyInOneSpotUpToFourTimes) {
  const auto contactsOf = [](int count) {
    TestWorld world;
    for (int i = 0; i < count; ++i) world.AddSphere("a", {}, {.inverseMass = 0.0f});
    world.Add("corner", {10.0f, 10.0f, 0.0f});
    world.Add("corner", {-10.0f, -10.0f, 0.0f});
    BroadPhase broadPhase;
    Findings found;
    broadPhase.Detect(Objects().GetObjects(), found);
    return static_cast<int>(found.contacts.size());
  };
  EXPECT_EQ(contactsOf(2), 1);
  EXPECT_EQ(contactsOf(8), 8 * 7 / 2);         // nine entries with the cursor: no quadrant splits
  EXPECT_EQ(contactsOf(12), 4 * 12 * 11 / 2);  // at the fifth level the quadrants have no marks left
}

TEST(BroadPhase, APileBeyondMeasureIsCutOffWithOneMessage) {
  TestWorld world;
  for (int i = 0; i < 500; ++i) world.AddSphere("pile", {});
  GalePhysics::BroadPhase broadPhase;
  GalePhysics::Findings findings;
  for (int pass = 0; pass < 2; ++pass) {
    findings = {};
    broadPhase.Detect(Objects().GetObjects(), findings);
    EXPECT_GE(findings.Size(), 65536u);
    EXPECT_LT(findings.Size(), 66100u);
  }
  EXPECT_EQ(Count(world.text(), "\n"), 1);
}

TEST(BroadPhase, SkipsPositionsThatAreNotFinite) {
  TestWorld world;
  world.AddSphere("a", {3.0f, 0.0f, 0.0f});
  world.AddSphere("b", {4.0f, 0.0f, 0.0f});
  for (const float sign : {1.0f, -1.0f}) {
    PositionOf(world.Add("lost")).x = sign * std::numeric_limits<float>::infinity();
    PositionOf(world.Add("lost")).y = sign * std::numeric_limits<float>::infinity();
  }
  BroadPhase broadPhase;
  Findings found;
  broadPhase.Detect(Objects().GetObjects(), found);
  EXPECT_EQ(found.contacts.size(), 1u);
}

void BuildPool(TestWorld& world) {
  for (int i = 0; i < 60; ++i) {
    const auto random = [] { return static_cast<float>(Random()) / static_cast<float>(kRandomMax) * 2.0f - 1.0f; };
    const Vec3 place = {random() * 8.0f, random() * 6.0f, 0.0f};
    const Vec3 velocity = {random() * 9.0f, random() * 9.0f, 0.0f};
    const BodyOptions options = {.velocity = velocity, .radius = 0.5f, .halfExtents = {0.6f, 0.4f, 0.0f}};
    if (i % 3 == 0)
      world.AddBox("box", place, options);
    else
      world.AddSphere("sphere", place, options);
  }
  for (const float side : {-1.0f, 1.0f}) {
    world.AddBox("wall", {side * 10.0f, 0.0f, 0.0f}, {.inverseMass = 0.0f, .halfExtents = {1.0f, 9.0f, 0.0f}});
    world.AddBox("wall", {0.0f, side * 8.0f, 0.0f}, {.inverseMass = 0.0f, .halfExtents = {11.0f, 1.0f, 0.0f}});
  }
}

std::uint64_t Digest() {
  std::uint64_t digest = 14695981039346656037ull;  // FNV-1a
  for (const auto& object : Objects().GetObjects()) {
    const Vec3& p = PositionOf(*object);
    for (const float value : {p.x, p.y, BodyOf(*object).velocity.x, BodyOf(*object).velocity.y})
      digest = (digest ^ std::bit_cast<std::uint32_t>(value)) * 1099511628211ull;
  }
  return digest;
}

// No sine or cosine is involved, so every compiler and machine must agree to the last bit.
TEST(Physics, SixHundredSubStepsGiveTheKnownResult) {
  TestWorld world;
  BuildPool(world);
  world.Step(600);
  int inside = 0;
  for (const auto& object : Objects().GetObjects())
    inside += std::abs(PositionOf(*object).x) < 10.5f && std::abs(PositionOf(*object).y) < 8.5f ? 1 : 0;
  EXPECT_EQ(inside, 64);
  EXPECT_EQ(Digest(), 0x70a16b21819ac616ull);
}

TEST(Physics, ASubStepAllocatesNothingOnceWarm) {
  TestWorld world;
  BuildPool(world);
  world.Step(600);
  const std::size_t before = AllocationCount();
  world.Step(60);
  EXPECT_EQ(AllocationCount() - before, 0u);
  world.AddSphere("one more", {});
  EXPECT_GT(AllocationCount(), before) << "the counter counts";
}

}  // namespace
