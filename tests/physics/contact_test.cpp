// The exact tests, their resolution and who hears of them.
#include <cmath>

#include "core/object_manager.h"
#include "core/transform.h"
#include "core/world_fixture.h"
#include "physics/primitive_assemblage.h"
#include "physics/rigid_body.h"
#include "physics/step.h"

using GalePhysics::Contact;
using GalePhysics::PrimitiveAssemblage;
using GalePhysics::RigidBody;

namespace {

using ContactTest = WorldFixture;
using ResolutionTest = WorldFixture;
using CallbacksTest = WorldFixture;

// Makes one sub-step and keeps what it finds.
struct StepFindings final : GalePhysics::StepObserver {
  explicit StepFindings(TestWorld& world) {
    GalePhysics::SetStepObserver(this);
    world.Step();
    GalePhysics::SetStepObserver(nullptr);
  }
  void OnContact(int /*subStep*/, const Contact& contact) override { contacts.push_back(contact); }
  void OnCollision(int /*subStep*/, const CollisionPair& pair) override { overlaps.push_back(pair); }
  std::vector<Contact> contacts;
  std::vector<CollisionPair> overlaps;
};

void ExpectNear(const Vec3& got, const Vec3& expected) {
  EXPECT_NEAR(got.x, expected.x, 1e-6f);
  EXPECT_NEAR(got.y, expected.y, 1e-6f);
  EXPECT_NEAR(got.z, expected.z, 1e-6f);
}

void ExpectContact(const Contact& contact, const GameObject& first, const Vec3& point, const Vec3& normal,
                   float penetration) {
  EXPECT_EQ(contact.firstOwner, &first);
  ExpectNear(contact.point, point);
  ExpectNear(contact.normal, normal);
  EXPECT_NEAR(contact.penetration, penetration, 1e-6f);
}

const BodyOptions kWall = {.inverseMass = 0.0f, .halfExtents = {1.0f, 1.0f, 0.0f}};
const BodyOptions kImmovable = {.inverseMass = 0.0f};

TEST_F(ContactTest, OfTwoBoxesNamesThePenetratedOneFirstWhateverTheOrder) {
  for (const bool wallFirst : {true, false}) {
    world.Restart();
    GameObject* wall = wallFirst ? &world.AddBox("wall", {}, kWall) : nullptr;
    auto& box = world.AddBox("box", {1.4f, 0.0f, 0.0f}, {.restitution = 0.5f});
    if (!wallFirst) wall = &world.AddBox("wall", {}, kWall);
    const StepFindings found(world);
    ASSERT_EQ(found.contacts.size(), 1u);
    ExpectContact(found.contacts[0], *wall, {0.9f, 0.0f, 0.0f}, {-1.0f, 0.0f, 0.0f}, 0.1f);
    EXPECT_EQ(found.contacts[0].second, &BodyOf(box));
    EXPECT_EQ(found.contacts[0].restitution, 0.75f);
    ExpectNear(PositionOf(box), {1.5f, 0.0f, 0.0f});
    EXPECT_EQ(PositionOf(*wall), Vec3{});
    world.Step();
    EXPECT_TRUE(StepFindings(world).contacts.empty()) << "moved out, they part";
  }
}

// In boxes of one size a face at depth 0 is no axis: side by side they meet, one above the other they do not.
TEST_F(ContactTest, OfTwoBoxesOfOneSizeIgnoresFacesThatLineUp) {
  const auto find = [&](const Vec3& place, const Vec3& half) {
    world.Restart();
    world.AddBox("a", {}, {.inverseMass = 0.0f, .halfExtents = half});
    world.AddBox("b", place);
    return StepFindings(world).contacts;
  };
  const Vec3 same = {0.5f, 0.5f, 0.0f};
  const auto beside = find({0.9f, 0.0f, 0.0f}, same);
  ASSERT_EQ(beside.size(), 1u);
  ExpectContact(beside[0], *Objects().FindObjectByName("b"), {0.5f, 0.0f, 0.0f}, {1.0f, 0.0f, 0.0f}, 0.1f);
  EXPECT_TRUE(find({0.0f, 0.9f, 0.0f}, same).empty());
  EXPECT_EQ(find({0.2f, 0.9f, 0.0f}, same).size(), 1u);
  EXPECT_TRUE(find({0.9f, 0.0f, 0.25f}, same).empty()) << "flat boxes of one size at different depths";
  EXPECT_EQ(find({1.4f, 0.0f, 0.25f}, {1.0f, 1.0f, 0.0f}).size(), 1u) << "of different sizes depth does not count";
}

TEST_F(ContactTest, OfASphereAndATurnedBoxHasTheSphereFirst) {
  world.AddBox("box", {}, {.inverseMass = 0.0f, .halfExtents = {2.0f, 0.5f, 0.0f}, .angle = kPi / 2.0f});
  auto& sphere = world.AddSphere("sphere", {0.25f, 2.4f, 0.0f}, {.radius = 0.5f});
  world.AddSphere("at the corner", {0.5f + 0.36f, -2.0f - 0.36f, 0.0f}, {.radius = 0.5f});
  const StepFindings found(world);
  ASSERT_EQ(found.contacts.size(), 1u) << "the other one is inside the corner's square but not its circle";
  ExpectContact(found.contacts[0], sphere, {0.25f, 2.0f, 0.0f}, {0.0f, 1.0f, 0.0f}, 0.1f);
}

TEST_F(ResolutionTest, AnImmovableLockedBoxStaysToTheLastDigit) {
  auto& wall = world.AddBox("wall", {0.1f, 0.2f, 0.0f}, kWall);
  auto& ball = world.AddSphere("ball", {0.1f, 1.6f, 0.0f}, {.velocity = {0.0f, -1.0f, 0.0f}, .radius = 0.5f});
  const std::string before = Document({&wall});
  world.Step();
  EXPECT_NEAR(PositionOf(ball).y, 1.7f, 1e-6f);
  EXPECT_NEAR(BodyOf(ball).velocity.y, 1.0f, 1e-6f);
  EXPECT_EQ(Document({&wall}), before);
}

TEST_F(ContactTest, OfSpheresThatJustTouchHasNoDepth) {
  auto& a = world.AddSphere("a", {});
  world.AddSphere("b", {2.0f, 0.0f, 0.0f});
  world.AddSphere("c", {0.0f, 2.0001f, 0.0f});
  world.AddSphere("tiny", {-9.0f, -9.0f, 0.0f}, {.radius = 0.0625f});
  world.AddSphere("tiny", {-9.125f, -9.0f, 0.0f}, {.radius = 0.0625f});
  const StepFindings found(world);
  ASSERT_EQ(found.contacts.size(), 2u);
  // The point is half the way between the centres, on the far side.
  ExpectContact(found.contacts[0], a, {-1.0f, 0.0f, 0.0f}, {-1.0f, 0.0f, 0.0f}, 0.0f);
}

TEST_F(ContactTest, GroupsAndGhostsDecideWhatIsFound) {
  const auto find = [&](const BodyOptions& a, const BodyOptions& b) {
    world.Restart();
    auto& sphere = world.AddSphere("a", {5.0f, 0.0f, 0.0f}, a);
    auto& box = world.AddBox("b", {6.2f, 0.0f, 0.0f}, b);
    const StepFindings found(world);
    for (const CollisionPair& pair : found.overlaps) EXPECT_EQ(pair, (CollisionPair{&sphere, &box}));
    return std::pair(found.contacts.size(), found.overlaps.size());
  };
  using Found = std::pair<std::size_t, std::size_t>;
  EXPECT_EQ(find({.group = 0}, {.group = 0}), Found(0, 0));
  EXPECT_EQ(find({.group = 0}, {.group = 1}), Found(1, 0));
  EXPECT_EQ(find({.group = 14}, {.group = 14}), Found(1, 0));
  EXPECT_EQ(find({.ghost = true}, {}), Found(0, 1));
  EXPECT_EQ(find({}, {.ghost = true}), Found(0, 1));
  EXPECT_EQ(find({.body = false}, {}), Found(1, 0));
  EXPECT_EQ(find({.body = false}, {.body = false}), Found(0, 0));
}

TEST_F(ContactTest, OfAnAssemblageIsThatOfItsPartsTurnedWithTheOwner) {
  auto& whole = world.Add("whole", {5.0f, 0.0f, 0.0f});
  whole.GetTransform().orientation = QuaternionFromZ(kPi / 2.0f);
  whole.GetTransform().Rebuild();
  whole.Insert(std::make_unique<RigidBody>()).inverseMass = 0.0f;
  auto& parts = whole.Insert(std::make_unique<PrimitiveAssemblage>());
  parts.AddBoxPart({2.0f, 2.0f, 0.0f}, {2.0f, 0.0f, 0.0f}, 0.0f);
  EXPECT_FLOAT_EQ(parts.broadPhaseSize, 2.0f + std::sqrt(2.0f) + 4.0f);
  parts.AddBoxPart({1.0f, 1.0f, 0.0f}, {-3.0f, 0.0f, 0.0f}, 45.0f);
  EXPECT_FLOAT_EQ(parts.broadPhaseSize, 2.0f + std::sqrt(2.0f) + 4.0f) << "a smaller part adds nothing";
  auto& sphere = world.AddSphere("sphere", {5.0f, 3.3f, 0.0f}, {.radius = 0.5f});
  auto& box = world.AddBox("box", {5.0f, -3.9f, 0.0f}, {.halfExtents = {0.3f, 0.3f, 0.0f}});
  const StepFindings found(world);
  ASSERT_EQ(found.contacts.size(), 2u);
  EXPECT_EQ(found.contacts[0].firstOwner, &sphere);
  ExpectNear(found.contacts[0].point, {5.0f, 3.0f, 0.0f});
  EXPECT_NEAR(found.contacts[0].penetration, 0.2f, 1e-6f);
  EXPECT_EQ(found.contacts[1].firstOwner, &box) << "the turned part's corner is inside the box";
  EXPECT_NEAR(found.contacts[1].penetration, (3.0f + std::sqrt(0.5f)) - 3.6f, 1e-6f);
}

TEST_F(ResolutionTest, AnEighthOfTheImpulseTurnsTheBodiesByTheirInertia) {
  Contact contact;
  contact.normal = {0.0f, 1.0f, 0.0f};
  const auto turnOf = [&](bool asFirst, float inverseInertia, float inverseMass, const Vec3& point) {
    const float speed = asFirst ? -1.0f : 1.0f;
    RigidBody& body = BodyOf(world.AddSphere("a", {}, {.inverseMass = inverseMass, .locked = false}));
    body.SetInverseInertia(Matrix33{} * inverseInertia);
    body.Integrate();  // makes the world tensor
    body.velocity = {0.0f, speed, 0.0f};
    contact.point = point;
    contact.first = asFirst ? &body : nullptr;
    contact.second = asFirst ? nullptr : &body;
    GalePhysics::ResolveVelocity(contact, 1.0f);
    EXPECT_EQ(body.velocity.y, speed * (1.0f - inverseMass));
    return body.angularVelocity.z;
  };
  const Vec3 beside = {1.0f, 0.0f, 0.0f};
  EXPECT_FLOAT_EQ(turnOf(true, 1.0f, 1.0f, beside), 0.125f);
  EXPECT_FLOAT_EQ(turnOf(false, 1.0f, 1.0f, beside), -0.125f);
  EXPECT_FLOAT_EQ(turnOf(true, 4.0f, 1.0f, beside), 0.03125f) << "the inertia itself multiplies";
  EXPECT_FLOAT_EQ(turnOf(true, 0.0f, 1.0f, beside), 0.125f) << "a tensor without inverse counts as identity";
  EXPECT_FLOAT_EQ(turnOf(true, 1.0f, 0.0f, beside), 0.125f) << "whatever the mass";
  EXPECT_EQ(turnOf(true, 1.0f, 1.0f, Contact::kNoPoint), 0.0f);

  // The turning of both bodies counts in their approach.
  contact.point = {1.5f, 0.0f, 0.0f};
  contact.first = &BodyOf(world.AddSphere("spins", {}, {.angularVelocity = {0.0f, 0.0f, 3.0f}}));
  contact.second = &BodyOf(world.AddSphere("too", {2.0f, 0.0f, 0.0f}, {.angularVelocity = {0.0f, 0.0f, -1.0f}}));
  EXPECT_FLOAT_EQ(GalePhysics::SeparatingVelocity(contact), 3.0f * 1.5f - 0.5f);
}

TEST_F(CallbacksTest, BothSidesHearOfContactsAndOverlapsEachAsItselfOncePerSubStep) {
  auto& a = world.AddSphere("a", {}, kImmovable);
  auto& b = world.AddSphere("b", {1.0f, 0.0f, 0.0f}, kImmovable);
  auto& ghost = world.AddSphere("ghost", {20.0f, 0.0f, 0.0f}, {.ghost = true});
  auto& solid = world.AddBox("solid", {20.0f, 0.5f, 0.0f}, kImmovable);
  std::vector<Contact> heard[2];
  AddHook(a).onContact = [&](const Contact& contact) { heard[0].push_back(contact); };
  AddHook(b).onContact = [&](const Contact& contact) { heard[1].push_back(contact); };
  int overlaps = 0;
  for (GameObject* self : {&ghost, &solid}) {
    AddHook(*self).onCollision = [&, self](const CollisionPair& pair) {
      ++overlaps;
      EXPECT_EQ(pair.self, self);
      EXPECT_EQ(pair.other, self == &ghost ? &solid : &ghost);
    };
  }
  world.RunFrame();
  EXPECT_EQ(PositionOf(b), (Vec3{1.0f, 0.0f, 0.0f})) << "two immovable bodies are reported only";
  ASSERT_EQ(heard[0].size(), 15u);
  ASSERT_EQ(heard[1].size(), 15u);
  EXPECT_EQ(heard[0][0].first, &BodyOf(a));
  EXPECT_EQ(heard[1][0].first, &BodyOf(b));
  EXPECT_EQ(heard[1][0].secondOwner, &a);
  EXPECT_EQ(heard[0][0].normal, heard[1][0].normal);
  EXPECT_EQ(overlaps, 30);
  GalePhysics::DetectOverlapsOnly();
  EXPECT_EQ(overlaps, 30) << "neither side is the mouse";
}

TEST_F(CallbacksTest, AContactIsHeardBeforeItIsResolvedAndAfterTheOnesBefore) {
  auto& middle = world.AddSphere("middle", {}, {.velocity = {0.0f, 1.0f, 0.0f}});
  world.AddSphere("below", {0.0f, -1.9f, 0.0f}, kImmovable);
  world.AddSphere("above", {0.0f, 1.9f, 0.0f}, kImmovable);
  std::vector<float> speeds;
  AddHook(middle).onContact = [&](const Contact&) { speeds.push_back(BodyOf(middle).velocity.y); };
  world.Step();
  ASSERT_EQ(speeds.size(), 2u);
  EXPECT_NEAR(speeds[0], 1.0f, 1e-6f) << "the upper half of the world comes first";
  EXPECT_NEAR(speeds[1], -1.0f, 1e-6f);
  EXPECT_NEAR(BodyOf(middle).velocity.y, 1.0f, 1e-6f);
}

TEST_F(CallbacksTest, WhilePausedTellOnlyWhatTheMouseTouchesAndNothingMoves) {
  auto& under = world.AddBox("under", {}, {.velocity = {1.0f, 0.0f, 0.0f}});
  auto& beside = world.AddSphere("beside", {5.0f, 0.0f, 0.0f});
  auto& other = world.AddSphere("other", {5.5f, 0.0f, 0.0f});
  int contacts = 0;
  AddHook(beside).onContact = [&](const Contact&) {
    if (++contacts > 1) return;
    for (int i = 0; i < 5; ++i) world.AddSphere("new", {5.0f, 0.5f, 0.0f}, kImmovable);
  };
  std::vector<GameObject*> touched;
  AddHook(under).onCollision = [&](const CollisionPair& pair) { touched.push_back(pair.other); };
  GalePhysics::DetectOverlapsOnly();
  GalePhysics::DetectOverlapsOnly();
  EXPECT_EQ(touched, (std::vector<GameObject*>(2, &Objects().GetCursor())));
  EXPECT_EQ(PositionOf(under), Vec3{});
  EXPECT_EQ(contacts, 0);
  PositionOf(other).x = 50.0f;
  world.Step();
  EXPECT_EQ(contacts, 0) << "nothing is left over for the next step";
  PositionOf(other).x = 5.5f;
  world.Step();
  EXPECT_EQ(contacts, 1) << "what a callback makes joins the next sub-step";
  world.Step();
  EXPECT_EQ(contacts, 1 + 6);
}

}  // namespace
