// A scene for one test: everything global stands as at the start of the program, files go into a folder of their own,
// and what is printed is kept. Everything is put back at the end.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/game_object.h"
#include "core/script.h"
#include "physics/contact.h"
#include "physics/math/vec3.h"
#include "physics/rigid_body.h"

struct BodyOptions {
  Vec3 velocity = {};
  Vec3 acceleration = {};
  Vec3 angularVelocity = {};
  float inverseMass = 1.0f;
  float radius = 1.0f;                    ///< spheres
  Vec3 halfExtents = {0.5f, 0.5f, 0.0f};  ///< boxes
  float angle = 0.0f;                     ///< radians about z
  float restitution = 1.0f;
  float damping = 1.0f;
  bool ghost = false;
  bool locked = true;
  bool body = true;  ///< false: a collider alone
  std::uint32_t group = 1;
};

class TestWorld {
 public:
  TestWorld();
  ~TestWorld();
  TestWorld(const TestWorld&) = delete;
  TestWorld& operator=(const TestWorld&) = delete;

  /// An object with a Transform alone.
  GameObject& Add(std::string_view name, const Vec3& position = {});
  GameObject& AddSphere(std::string_view name, const Vec3& position, const BodyOptions& options = {});
  GameObject& AddBox(std::string_view name, const Vec3& position, const BodyOptions& options = {});

  /// Sub-steps at the length of a frame's, or the fifteen of a whole frame.
  void Step(int subSteps = 1);
  void RunFrame();

  /// What has been printed since the start or the last ClearText.
  std::string text();
  void ClearText();

  void WriteFile(const std::string& name, std::string_view content);
  std::string ReadFile(const std::string& name);
  /// Destroys all objects and generators and forgets the files read, as a new start of the program in this folder.
  void Restart();

 private:
  void ResetGlobals();

  std::filesystem::path oldFolder_;
  std::filesystem::path folder_;
  char* buffer_ = nullptr;
  std::size_t bufferSize_ = 0;
  std::size_t textStart_ = 0;
  std::FILE* stream_ = nullptr;
};

Vec3& PositionOf(GameObject& object);
GalePhysics::RigidBody& BodyOf(GameObject& object);

/// A script whose reactions a test sets. Files can name it "test hook"; it has one value, the name of a level that it
/// loads while it is being read ("" for none).
class HookScript final : public Script {
 public:
  static constexpr const char* kName = "test hook";

  ~HookScript() override {
    if (onDestroy) onDestroy();
  }
  void Update(float /*step*/) override {
    if (onUpdate) onUpdate();
  }
  void Initialize() override { ++initialised; }
  void HandleEvent(const Event& event) override {
    if (onEvent) onEvent(event);
  }
  void OnCollision(const CollisionPair& pair) override {
    if (onCollision) onCollision(pair);
  }
  void OnContact(const GalePhysics::Contact& contact) override {
    if (onContact) onContact(contact);
  }
  void Serialize(Serializer& writer) const override;
  void Deserialize(Serializer& reader) override;
  const char* GetName() const override { return kName; }

  std::function<void()> onDestroy;
  std::function<void()> onUpdate;
  std::function<void(const Event&)> onEvent;
  std::function<void(const CollisionPair&)> onCollision;
  std::function<void(const GalePhysics::Contact&)> onContact;
  std::string level;
  int initialised = 0;
};

/// Attaches a hook to an object, which gets a ScriptBox if it has none.
HookScript& AddHook(GameObject& object);

/// How often `part` occurs in `whole`.
int Count(std::string_view whole, std::string_view part);
/// The text without the lines that hold object and generator IDs.
std::string WithoutIds(std::string_view text);
/// The document that these objects make, the generator host first if there is one.
std::string Document(const std::vector<GameObject*>& objects);
