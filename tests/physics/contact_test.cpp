// The exact tests, their resolution and who hears of them.
#include <gtest/gtest.h>

#include <cmath>

#include "core/object_manager.h"
#include "core/selection.h"
#include "core/transform.h"
#include "input/input.h"
#include "physics/narrow_phase.h"
#include "physics/primitive_assemblage.h"
#include "physics/rigid_body.h"
#include "physics/step.h"
#include "test_world.h"

using GalePhysics::Contact;
using GalePhysics::Findings;
using GalePhysics::OverlapPair;
using GalePhysics::PrimitiveAssemblage;
using GalePhysics::RigidBody;

namespace {

struct Recorder final : GalePhysics::StepObserver {
  Recorder() { GalePhysics::SetStepObserver(this); }
  ~Recorder() { GalePhysics::SetStepObserver(nullptr); }
  void OnContact(int /*subStep*/, const Contact& contact) override { contacts.push_back(contact); }
  void OnOverlap(int /*subStep*/, const OverlapPair& pair) override { overlaps.push_back(pair); }
  std::vector<Contact> contacts;
  std::vector<OverlapPair> overlaps;
};

void ExpectNear(const Vec3& got, const Vec3& expected) {
  EXPECT_NEAR(got.x, expected.x, 1e-6f);
  EXPECT_NEAR(got.y, expected.y, 1e-6f);
  EXPECT_NEAR(got.z, expected.z, 1e-6f);
}

const BodyOptions kWall = {.inverseMass = 0.0f, .halfExtents = {1.0f, 1.0f, 0.0f}};

TEST(Contact, OfTwoBoxesNamesThePenetratedOneFirstWhateverTheOrder) {
  for (const bool wallFirst : {true, false}) {
    TestWorld world;
    Recorder seen;
    GameObject* wall = wallFirst ? &world.AddBox("wall", {}, kWall) : nullptr;
    auto& box = world.AddBox("box", {1.4f, 0.0f, 0.0f}, {.restitution = 0.5f});
    if (!wallFirst) wall = &world.AddBox("wall", {}, kWall);
    world.Step();
    ASSERT_EQ(seen.contacts.size(), 1u);
    const Contact& contact = seen.contacts[0];
    EXPECT_EQ(contact.firstOwner, wall);
    EXPECT_EQ(contact.second, &BodyOf(box));
    ExpectNear(contact.point, {0.9f, 0.0f, 0.0f});
    EXPECT_EQ(contact.normal, (Vec3{-1.0f, 0.0f, 0.0f}));
    EXPECT_NEAR(contact.penetration, 0.1f, 1e-6f);
    EXPECT_EQ(contact.restitution, 0.75f);
    ExpectNear(PositionOf(box), {1.5f, 0.0f, 0.0f});
    EXPECT_EQ(PositionOf(*wall), Vec3{});
    world.Step(5);
    EXPECT_LE(seen.contacts.size(), 2u) << "moved out, they part";
  }
}

// In boxes of one size a face at depth 0 is no axis: side by side they meet, one above the other they do not.
TEST(Contact, OfTwoBoxesOfOneSizeIgnoresFacesThatLineUp) {
  const auto find = [](const Vec3& place, const Vec3& half) {
    TestWorld world;
    Recorder seen;
    world.AddBox("a", {}, {.inverseMass = 0.0f, .halfExtents = half});
    world.AddBox("b", place);
    world.Step();
    return seen.contacts;
  };
  const Vec3 same = {0.5f, 0.5f, 0.0f};
  const auto beside = find({0.9f, 0.0f, 0.0f}, same);
  ASSERT_EQ(beside.size(), 1u);
  EXPECT_EQ(beside[0].normal, (Vec3{1.0f, 0.0f, 0.0f}));
  ExpectNear(beside[0].point, {0.5f, 0.0f, 0.0f});
  EXPECT_NEAR(beside[0].penetration, 0.1f, 1e-6f);
  EXPECT_TRUE(find({0.0f, 0.9f, 0.0f}, same).empty());
  EXPECT_EQ(find({0.2f, 0.9f, 0.0f}, same).size(), 1u);
  EXPECT_TRUE(find({0.9f, 0.0f, 0.25f}, same).empty()) << "flat boxes of one size at different depths";
  EXPECT_EQ(find({1.4f, 0.0f, 0.25f}, {1.0f, 1.0f, 0.0f}).size(), 1u) << "of different sizes depth does not count";
}

TEST(Contact, OfSpheresThatJustTouchHasNoDepth) {
  TestWorld world;
  Recorder seen;
  auto& a = world.AddSphere("a", {});
  world.AddSphere("b", {2.0f, 0.0f, 0.0f});
  world.AddSphere("c", {0.0f, 2.0001f, 0.0f});
  world.AddSphere("tiny", {-9.0f, -9.0f, 0.0f}, {.radius = 0.0625f});
  world.AddSphere("tiny", {-9.125f, -9.0f, 0.0f}, {.radius = 0.0625f});
  world.Step();
  ASSERT_EQ(seen.contacts.size(), 2u);
  EXPECT_EQ(seen.contacts[0].firstOwner, &a);
  EXPECT_EQ(seen.contacts[0].penetration, 0.0f);
  EXPECT_EQ(seen.contacts[0].normal, (Vec3{-1.0f, 0.0f, 0.0f}));
  EXPECT_EQ(seen.contacts[0].point, (Vec3{-1.0f, 0.0f, 0.0f})) << "half the way between the centres, on the far side";
}

TEST(Contact, OfASphereAndATurnedBoxHasTheSphereFirst) {
  TestWorld world;
  Recorder seen;
  const float quarter = kPi / 2.0f;
  world.AddBox("box", {}, {.inverseMass = 0.0f, .halfExtents = {2.0f, 0.5f, 0.0f}, .angle = quarter});
  auto& sphere = world.AddSphere("sphere", {0.25f, 2.4f, 0.0f}, {.radius = 0.5f});
  world.AddSphere("at the corner", {0.5f + 0.36f, -2.0f - 0.36f, 0.0f}, {.radius = 0.5f});
  world.Step();
  ASSERT_EQ(seen.contacts.size(), 1u) << "the other one is inside the corner's square but not its circle";
  const Contact& contact = seen.contacts[0];
  EXPECT_EQ(contact.firstOwner, &sphere);
  ExpectNear(contact.point, {0.25f, 2.0f, 0.0f});
  ExpectNear(contact.normal, {0.0f, 1.0f, 0.0f});
  EXPECT_NEAR(contact.penetration, 0.1f, 1e-6f);
}

TEST(Contact, DegenerateSpheresStayFinite) {
  TestWorld world;
  auto& a = world.AddSphere("a", {}, {.velocity = {1.0f, 0.0f, 0.0f}});
  auto& b = world.AddSphere("b", {}, {.velocity = {1.0f, 0.0f, 0.0f}});
  auto& inside = world.AddSphere("inside", {9.0f, 9.0f, 0.0f}, {.radius = 0.1f});
  world.AddBox("box", {9.0f, 9.0f, 0.0f}, kWall);
  world.Step(30);
  for (GameObject* object : {&a, &b, &inside}) EXPECT_TRUE(IsFinite(PositionOf(*object)));
  EXPECT_EQ(PositionOf(a), PositionOf(b)) << "one place, no direction to part in";
}

TEST(Contact, GroupsAndGhostsDecideWhatIsFound) {
  const auto find = [](const BodyOptions& a, const BodyOptions& b) {
    TestWorld world;
    Recorder seen;
    auto& sphere = world.AddSphere("a", {5.0f, 0.0f, 0.0f}, a);
    auto& box = world.AddBox("b", {6.2f, 0.0f, 0.0f}, b);
    world.Step();
    for (const OverlapPair& pair : seen.overlaps) EXPECT_EQ(pair, OverlapPair(&sphere, &box));
    return std::pair(seen.contacts.size(), seen.overlaps.size());
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

TEST(Assemblage, PlacesItsPartsByTheOwnersTurnAndGrowsItsReach) {
  TestWorld world;
  Recorder seen;
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
  world.Step();
  ASSERT_EQ(seen.contacts.size(), 2u);
  EXPECT_EQ(seen.contacts[0].firstOwner, &sphere);
  ExpectNear(seen.contacts[0].point, {5.0f, 3.0f, 0.0f});
  EXPECT_NEAR(seen.contacts[0].penetration, 0.2f, 1e-6f);
  EXPECT_EQ(seen.contacts[1].firstOwner, &box) << "the turned part's corner is inside the box";
  EXPECT_NEAR(seen.contacts[1].penetration, (3.0f + std::sqrt(0.5f)) - 3.6f, 1e-6f);
}

TEST(Resolution, EqualBodiesHeadOnExchangeTheirVelocitiesOrStop) {
  for (const float restitution : {1.0f, 0.0f}) {
    TestWorld world;
    const auto moving = [&](float v) { return BodyOptions{.velocity = {v, 0.5f, 0.0f}, .restitution = restitution}; };
    auto& a = world.AddSphere("a", {-0.99f, 0.0f, 0.0f}, moving(2.0f));
    auto& b = world.AddSphere("b", {0.99f, 0.0f, 0.0f}, moving(-2.0f));
    world.Step();
    EXPECT_NEAR(BodyOf(a).velocity.x, -2.0f * restitution, 1e-6f);
    EXPECT_NEAR(BodyOf(b).velocity.x, 2.0f * restitution, 1e-6f);
    EXPECT_NEAR(BodyOf(a).velocity.y, 0.5f, 1e-6f) << "along the contact nothing changes";
    EXPECT_NEAR(Length(PositionOf(a) - PositionOf(b)), 2.0f, 1e-6f);
  }
}

TEST(Resolution, SharesThePushByInverseMassAlsoWhileTheyPart) {
  TestWorld world;
  auto& heavy = world.AddSphere("heavy", {}, {.velocity = {-1.0f, 0.0f, 0.0f}, .inverseMass = 0.25f});
  auto& light = world.AddSphere("light", {1.6f, 0.0f, 0.0f}, {.inverseMass = 0.75f});
  const float moved = -1.0f * 0.0085f / 3.0f;
  world.Step();
  const float depth = 2.0f - (1.6f - moved);
  EXPECT_NEAR(PositionOf(heavy).x, moved - 0.25f * depth, 1e-6f);
  EXPECT_NEAR(PositionOf(light).x, 1.6f + 0.75f * depth, 1e-6f);
  EXPECT_EQ(BodyOf(heavy).velocity.x, -1.0f) << "parting already";
}

TEST(Resolution, AnImmovableLockedBoxStaysToTheLastDigit) {
  TestWorld world;
  auto& wall = world.AddBox("wall", {0.1f, 0.2f, 0.0f}, kWall);
  auto& ball = world.AddSphere("ball", {0.1f, 1.6f, 0.0f}, {.velocity = {0.0f, -1.0f, 0.0f}, .radius = 0.5f});
  const std::string before = Document({&wall});
  world.Step();
  EXPECT_NEAR(PositionOf(ball).y, 1.7f, 1e-6f);
  EXPECT_NEAR(BodyOf(ball).velocity.y, 1.0f, 1e-6f);
  EXPECT_EQ(Document({&wall}), before);
}

TEST(Resolution, AnEighthOfTheImpulseTurnsTheBodiesByTheirInertia) {
  TestWorld world;
  const auto hit = [&](bool asFirst, float inverseInertia, float inverseMass, const Vec3& point) {
    auto& object = world.Add("a");
    RigidBody& body = object.Insert(std::make_unique<RigidBody>());
    body.inverseMass = inverseMass;
    body.SetInverseInertia(Matrix33{} * inverseInertia);
    body.Integrate();  // makes the world tensor
    body.velocity = {0.0f, asFirst ? -1.0f : 1.0f, 0.0f};
    Contact contact;
    contact.normal = {0.0f, 1.0f, 0.0f};
    contact.point = point;
    (asFirst ? contact.first : contact.second) = &body;
    GalePhysics::ResolveVelocity(contact, 1.0f);
    EXPECT_EQ(body.velocity.y, (asFirst ? -1.0f : 1.0f) * (1.0f - inverseMass));
    return body.angularVelocity.z;
  };
  EXPECT_FLOAT_EQ(hit(true, 1.0f, 1.0f, {1.0f, 0.0f, 0.0f}), 0.125f);
  EXPECT_FLOAT_EQ(hit(false, 1.0f, 1.0f, {1.0f, 0.0f, 0.0f}), -0.125f);
  EXPECT_FLOAT_EQ(hit(true, 4.0f, 1.0f, {1.0f, 0.0f, 0.0f}), 0.03125f) << "the inertia itself multiplies";
  EXPECT_FLOAT_EQ(hit(true, 0.0f, 1.0f, {1.0f, 0.0f, 0.0f}), 0.125f) << "a tensor without inverse counts as identity";
  EXPECT_FLOAT_EQ(hit(true, 1.0f, 0.0f, {1.0f, 0.0f, 0.0f}), 0.125f) << "whatever the mass";
  EXPECT_EQ(hit(true, 1.0f, 1.0f, Contact::kNoPoint), 0.0f);

  // The turning of both bodies counts in their approach.
  auto& a = world.AddSphere("spins", {}, {.angularVelocity = {0.0f, 0.0f, 3.0f}});
  auto& b = world.AddSphere("rests", {2.0f, 0.0f, 0.0f}, {.angularVelocity = {0.0f, 0.0f, -1.0f}});
  Contact contact;
  contact.normal = {0.0f, 1.0f, 0.0f};
  contact.point = {1.5f, 0.0f, 0.0f};
  contact.first = &BodyOf(a);
  contact.second = &BodyOf(b);
  EXPECT_FLOAT_EQ(GalePhysics::SeparatingVelocity(contact), 3.0f * 1.5f - 0.5f);
}

TEST(Callbacks, BothSidesHearOfEveryContactWithTheBodiesSwappedAndOneNormal) {
  TestWorld world;
  auto& a = world.AddSphere("a", {}, {.inverseMass = 0.0f});
  auto& b = world.AddSphere("b", {1.0f, 0.0f, 0.0f}, {.inverseMass = 0.0f});
  std::vector<Contact> heard[2];
  AddHook(a).onContact = [&](const Contact& contact) { heard[0].push_back(contact); };
  AddHook(b).onContact = [&](const Contact& contact) { heard[1].push_back(contact); };
  world.RunFrame();
  EXPECT_EQ(PositionOf(b), (Vec3{1.0f, 0.0f, 0.0f})) << "two immovable bodies are reported only";
  ASSERT_EQ(heard[0].size(), 15u);
  ASSERT_EQ(heard[1].size(), 15u);
  EXPECT_EQ(heard[0][0].first, &BodyOf(a));
  EXPECT_EQ(heard[1][0].first, &BodyOf(b));
  EXPECT_EQ(heard[1][0].secondOwner, &a);
  EXPECT_EQ(heard[0][0].normal, heard[1][0].normal);
}

TEST(Callbacks, OverlapsReachBothSidesEachAsItselfOncePerSubStep) {
  TestWorld world;
  auto& ghost = world.AddSphere("ghost", {20.0f, 0.0f, 0.0f}, {.ghost = true});
  auto& solid = world.AddBox("solid", {20.0f, 0.5f, 0.0f}, {.inverseMass = 0.0f});
  int calls = 0;
  for (GameObject* self : {&ghost, &solid}) {
    AddHook(*self).onCollision = [&, self](const CollisionPair& pair) {
      ++calls;
      EXPECT_EQ(pair.self, self);
      EXPECT_EQ(pair.other, self == &ghost ? &solid : &ghost);
    };
  }
  world.RunFrame();
  EXPECT_EQ(calls, 30);
  GalePhysics::DetectOverlapsOnly();
  EXPECT_EQ(calls, 30) << "neither side is the mouse";
}

TEST(Callbacks, AContactIsHeardBeforeItIsResolvedAndAfterTheOnesBefore) {
  TestWorld world;
  auto& middle = world.AddSphere("middle", {}, {.velocity = {0.0f, 1.0f, 0.0f}});
  world.AddSphere("below", {0.0f, -1.9f, 0.0f}, {.inverseMass = 0.0f});
  world.AddSphere("above", {0.0f, 1.9f, 0.0f}, {.inverseMass = 0.0f});
  std::vector<float> speeds;
  AddHook(middle).onContact = [&](const Contact&) { speeds.push_back(BodyOf(middle).velocity.y); };
  world.Step();
  ASSERT_EQ(speeds.size(), 2u);
  EXPECT_NEAR(speeds[0], 1.0f, 1e-6f) << "the upper half of the world comes first";
  EXPECT_NEAR(speeds[1], -1.0f, 1e-6f);
  EXPECT_NEAR(BodyOf(middle).velocity.y, 1.0f, 1e-6f);
}

TEST(Callbacks, MayMakeObjectsThatJoinTheNextSubStep) {
  TestWorld world;
  auto& a = world.AddSphere("a", {}, {.inverseMass = 0.0f});
  world.AddSphere("b", {1.0f, 0.0f, 0.0f}, {.inverseMass = 0.0f});
  int contacts = 0;
  AddHook(a).onContact = [&](const Contact&) {
    if (++contacts > 1) return;
    for (int i = 0; i < 5; ++i) world.AddSphere("new", {0.0f, 0.5f, 0.0f}, {.inverseMass = 0.0f});
  };
  world.Step();
  EXPECT_EQ(contacts, 1);
  world.Step();
  EXPECT_EQ(contacts, 1 + 6);
}

TEST(DetectOverlapsOnly, MovesNothingAndTellsOnlyWhatTheMouseTouches) {
  TestWorld world;
  auto& under = world.AddBox("under", {}, {.velocity = {1.0f, 0.0f, 0.0f}});
  auto& beside = world.AddSphere("beside", {5.0f, 0.0f, 0.0f});
  auto& other = world.AddSphere("other", {5.5f, 0.0f, 0.0f});
  int contacts = 0;
  AddHook(beside).onContact = [&](const Contact&) { ++contacts; };
  std::vector<GameObject*> touched;
  AddHook(under).onCollision = [&](const CollisionPair& pair) { touched.push_back(pair.other); };
  GalePhysics::DetectOverlapsOnly();
  GalePhysics::DetectOverlapsOnly();
  EXPECT_EQ(touched, (std::vector<GameObject*>{&Objects().GetCursor(), &Objects().GetCursor()}));
  EXPECT_EQ(PositionOf(under), Vec3{});
  EXPECT_EQ(contacts, 0);
  PositionOf(other).x = 50.0f;
  world.Step();
  EXPECT_EQ(contacts, 0) << "nothing is left over for the next step";
}

TEST(MouseComponent, PicksWhatIsUnderTheCursorAndAddsWithShift) {
  TestWorld world;
  auto& below = world.AddBox("below", {2.0f, 1.0f, 0.0f});
  auto& ghost = world.AddSphere("ghost", {2.0f, 1.0f, 0.0f}, {.ghost = true});
  auto& apart = world.AddBox("apart", {-2.0f, 1.0f, 0.0f});
  auto& cursor = Objects().GetCursor();
  const auto clickAt = [&](float x) {
    Input::GetPointer().worldX = x;
    Input::GetPointer().worldY = 1.0f;
    cursor.Update(0.0f);
    cursor.GetTransform().Rebuild();  // the component moves it after its own Transform was rebuilt
    Input::SetMouseButton(Input::MouseButton::kLeft, false, 0, 0);
    Input::BeginMouseFrame();
    Input::SetMouseButton(Input::MouseButton::kLeft, true, 0, 0);
    world.Step();
  };
  using Ids = std::vector<std::uint32_t>;
  clickAt(-2.0f);
  EXPECT_EQ(GetSelection(), Ids{apart.id});
  clickAt(2.0f);
  EXPECT_EQ(GetSelection().size(), 1u) << "without Shift the last one stays";
  Input::SetKey(SDLK_LSHIFT, true);
  clickAt(2.0f);
  EXPECT_EQ(GetSelection().size(), 2u);
  clickAt(-2.0f);
  EXPECT_EQ(GetSelection().back(), apart.id);
  EXPECT_EQ(GetSelection().size(), 3u);
  EXPECT_NE(GetSelection()[0], GetSelection()[1]);
  EXPECT_TRUE(GetSelection()[0] == below.id || GetSelection()[0] == ghost.id);
  Input::BeginMouseFrame();
  ClearSelection();
  world.Step();
  EXPECT_TRUE(GetSelection().empty()) << "a held button picks nothing";
}

}  // namespace
