// The quadtree against a plain one written from its rules, without pruning, tight boxes or kept storage.
#include "physics/broad_phase.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <tuple>

#include "allocation_counter.h"
#include "core/object_manager.h"
#include "core/random.h"
#include "core/transform.h"
#include "core/world_fixture.h"
#include "physics/box_collider.h"
#include "physics/generator_host.h"
#include "physics/gravity_generator.h"
#include "physics/primitive_assemblage.h"
#include "physics/sphere_collider.h"

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
  unsigned mask;  // the quadrants before the present one: two copies that share one are tested there
  const Collider* collider;
};

const Vec3& PlaceOf(const Entry& entry) { return entry.collider->owner->GetTransform().position; }

void TestPair(const Entry& a, const Entry& b, Findings& findings) {
  if ((a.mask & b.mask) != 0 || (a.collider->collisionGroup == 0 && b.collider->collisionGroup == 0)) return;
  const float reach = a.collider->broadPhaseSize + b.collider->broadPhaseSize;
  const Vec3 apart = PlaceOf(a) - PlaceOf(b);
  if (std::abs(apart.x) <= reach && std::abs(apart.y) <= reach) Collide(*a.collider, *b.collider, findings);
}

void Visit(std::vector<Entry> entries, unsigned depth, const Vec3& centre, const Vec3& half, Findings& findings) {
  for (unsigned q = 0; q < 4; ++q) {
    const float x = q < 2 ? 1.0f : -1.0f;
    const float y = q % 2 == 0 ? 1.0f : -1.0f;
    std::vector<Entry> list;
    for (Entry& entry : entries) {
      const float r = entry.collider->broadPhaseSize;
      if (x * PlaceOf(entry).x + r < x * centre.x || y * PlaceOf(entry).y + r < y * centre.y) continue;
      list.push_back(entry);
      if (depth < 4) entry.mask |= 1u << (4 * depth + q);
    }
    if (list.size() >= 10 && depth < 4) {
      Visit(list, depth + 1, centre + Vec3{x * half.x, y * half.y, 0.0f}, half * 0.5f, findings);
      continue;
    }
    for (std::size_t i = 0; i < list.size(); ++i)
      for (std::size_t j = i + 1; j < list.size(); ++j) TestPair(list[i], list[j], findings);
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
  std::vector<Entry> entries;
  for (const auto* shape : ShapeListing<BoxCollider>::List()) entries.push_back({0, shape});
  for (const auto* shape : ShapeListing<SphereCollider>::List()) entries.push_back({0, shape});
  for (const auto* shape : ShapeListing<PrimitiveAssemblage>::List()) entries.push_back({0, shape});
  Findings findings;
  Visit(entries, 0, (high + low) * 0.5f, (high - low) * 0.25f, findings);
  return findings;
}

auto ValuesOf(const Contact& c) {
  return std::tie(c.first, c.second, c.firstOwner, c.secondOwner, c.normal, c.point, c.penetration, c.restitution);
}

// Between -1 and 1.
float RandomUnit() { return static_cast<float>(Random()) / static_cast<float>(kRandomMax) * 2.0f - 1.0f; }
bool OneIn(int number) { return Random() % number == 0; }

// Random shapes within `spread` of a point: spheres, boxes in every turn, ghosts, group 0, sizes that occur twice.
void Scatter(TestWorld& world, int count, float spread, const Vec3& middle, bool turned = true) {
  for (int i = 0; i < count; ++i) {
    BodyOptions options;
    options.ghost = OneIn(8);
    options.group = static_cast<std::uint32_t>(Random() % 3);
    options.locked = OneIn(2);
    options.velocity = {RandomUnit() * 5.0f, RandomUnit() * 5.0f, 0.0f};
    options.angularVelocity.z = RandomUnit() * 3.0f;
    options.inverseMass = static_cast<float>(Random() % 4);
    options.restitution = 0.5f;
    options.radius = OneIn(2) ? 0.5f : 0.05f + std::abs(RandomUnit());
    options.halfExtents.x = OneIn(2) ? 0.5f : 0.1f + std::abs(RandomUnit()) * 2.0f;
    options.halfExtents.y = OneIn(2) ? 0.5f : 0.1f + std::abs(RandomUnit());
    options.halfExtents.z = OneIn(4) ? 0.5f : 0.0f;
    options.angle = !turned || OneIn(2) ? 0.0f : RandomUnit() * kPi;
    const Vec3 place = middle + Vec3{RandomUnit() * spread, RandomUnit() * spread, 0.0f};
    auto& object = OneIn(2) ? world.AddSphere("sphere", place, options) : world.AddBox("box", place, options);
    // A damaged file may tilt or stretch an object.
    if (!OneIn(8)) continue;
    object.GetTransform().orientation = {1.0f + 0.3f * RandomUnit(), 0.3f * RandomUnit(), 0.0f, RandomUnit()};
    if (OneIn(2)) object.GetTransform().orientation.i = 0.0f;
    object.GetTransform().Rebuild();
  }
  auto& whole = world.Add("whole", middle + Vec3{spread / 2.0f, 0.0f, 0.0f});
  whole.AddComponent("RigidBody");
  auto& parts = whole.Insert(std::make_unique<PrimitiveAssemblage>());
  parts.AddBoxPart({2.0f, 1.0f, 0.0f}, {1.0f, 1.0f, 0.0f}, turned ? 30.0f : 0.0f);
}

class BroadPhaseTest : public WorldFixture {
 protected:
  // Gives the number of contacts.
  std::size_t ExpectLikeReference() {
    Findings found;
    broadPhase.Detect(Objects().GetObjects(), GalePhysics::Look::kAll, found);
    const Findings expected = Reference();
    EXPECT_EQ(found.overlaps, expected.overlaps);
    EXPECT_EQ(found.contacts.size(), expected.contacts.size());
    EXPECT_TRUE(std::ranges::equal(found.contacts, expected.contacts, {}, ValuesOf, ValuesOf));
    return found.contacts.size();
  }

  BroadPhase broadPhase;  // one for all scenes of a test: what it keeps must not show
};

TEST_F(BroadPhaseTest, FindsWhatThePlainQuadtreeFindsInTheSameOrder) {
  std::size_t contacts = 0;
  for (unsigned seed = 1; seed <= 12; ++seed) {
    SCOPED_TRACE(seed);
    world.Restart();
    SeedRandom(seed);
    const float spread = seed % 3 == 0 ? 2.0f : 12.0f;
    Scatter(world, 20 + static_cast<int>(seed) * 8, spread, {seed % 2 == 0 ? 30.0f : 0.0f, -5.0f, 0.0f});
    for (int step = 0; step < 5; ++step) {
      contacts += ExpectLikeReference();
      world.Step();
    }
  }
  EXPECT_GT(contacts, 2000u);
  world.Restart();
  Scatter(world, 300, 1.5f, {});
  EXPECT_GT(ExpectLikeReference(), 10000u);
}

TEST_F(BroadPhaseTest, APileBeyondMeasureIsCutOffWithOneMessage) {
  for (int i = 0; i < 500; ++i) world.AddSphere("pile", {});
  for (int pass = 0; pass < 2; ++pass) {
    Findings found;
    broadPhase.Detect(Objects().GetObjects(), GalePhysics::Look::kAll, found);
    EXPECT_GE(found.Size(), 65536u);
    EXPECT_LT(found.Size(), 66100u);
  }
  EXPECT_EQ(Count(world.text(), "\n"), 1);
}

using PhysicsTest = WorldFixture;

std::uint64_t Digest() {
  std::uint64_t digest = 14695981039346656037ull;  // FNV-1a
  for (const auto& object : Objects().GetObjects()) {
    const Vec3& p = PositionOf(*object);
    const Vec3& v = BodyOf(*object).velocity;
    for (const float value : {p.x, p.y, v.x, v.y, BodyOf(*object).angularVelocity.z})
      digest = (digest ^ std::bit_cast<std::uint32_t>(value)) * 1099511628211ull;
  }
  return digest;
}

// No sine or cosine is involved, so every compiler and machine must agree to the last bit.
TEST_F(PhysicsTest, NineHundredSubStepsGiveTheKnownResultAndLaterOnesAllocateNothing) {
  Scatter(world, 60, 7.0f, {}, false);
  for (const float side : {-1.0f, 1.0f}) {
    world.AddBox("wall", {side * 10.0f, 0.0f, 0.0f}, {.inverseMass = 0.0f, .halfExtents = {1.0f, 9.0f, 0.0f}});
    world.AddBox("wall", {0.0f, side * 8.0f, 0.0f}, {.inverseMass = 0.0f, .halfExtents = {11.0f, 1.0f, 0.0f}});
  }
  auto& gravity = GalePhysics::AdoptGenerator(std::make_unique<GalePhysics::GravityGenerator>(Vec3{0.0f, -2.0f, 0.0f}));
  for (const auto& object : Objects().GetObjects()) BodyOf(*object).AddGenerator(&gravity);
  world.Step(900);
  EXPECT_EQ(Digest(), 0xe16f7241b9d0aea5ull);
  const std::size_t before = AllocationCount();
  world.Step(60);
  EXPECT_EQ(AllocationCount() - before, 0u);
  world.AddSphere("one more", {});
  EXPECT_GT(AllocationCount(), before) << "the counter counts";
}

// A frame leaves alone what has come to rest; steps made one by one look at everything each time.
TEST_F(PhysicsTest, AFrameGivesWhatItsSubStepsGiveOneByOne) {
  // Rounding makes each of these two the other one at length 1, again and again.
  const Quaternion restless = {0.357156843f, 0.0f, 0.0f, -0.93404454f};
  const Quaternion other = Normalised(restless);
  ASSERT_EQ(Normalised(other), restless);
  std::array<std::vector<std::uint64_t>, 2> states;
  for (const bool wholeFrames : {false, true}) {
    world.Restart();
    for (const float x : {-2.0f, 2.0f}) world.AddBox("wall", {x, 5.0f, 0.0f}, {.inverseMass = 0.0f});
    world.AddSphere("ball", {0.0f, 5.0f, 0.0f}, {.velocity = {9.0f, 0.0f, 0.0f}});
    auto& turned = world.Add("turned");
    turned.AddComponent("RigidBody");
    for (int frame = 0; frame < 200; ++frame) {
      turned.GetTransform().orientation =  // as by a script
          turned.GetTransform().orientation == restless ? other : restless;
      wholeFrames ? world.RunFrame() : world.Step(15);
      states[wholeFrames].push_back(Digest());  // the ball wakes everything at every bounce
      states[wholeFrames].push_back(std::bit_cast<std::uint32_t>(turned.GetTransform().orientation.k));
    }
  }
  EXPECT_EQ(states[0], states[1]);
}

}  // namespace
