#include "test_world.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "build_world.h"
#include "core/file_cache.h"
#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/pause.h"
#include "core/print.h"
#include "core/random.h"
#include "core/script_box.h"
#include "core/selection.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "input/input.h"
#include "match/episode/new_game.h"
#include "physics/box_collider.h"
#include "physics/generator_host.h"
#include "physics/slow_motion.h"
#include "physics/sphere_collider.h"
#include "physics/step.h"
#include "screens/logo_screen_script.h"
#include "screens/menu_system.h"
#include "screens/options.h"
#include "screens/start_up.h"

using GalePhysics::BoxCollider;
using GalePhysics::RigidBody;
using GalePhysics::SphereCollider;

TestWorld::TestWorld() : oldFolder_(std::filesystem::current_path()) {
  std::string pattern = (std::filesystem::temp_directory_path() / "brinewhirl-test-XXXXXX").string();
  folder_ = ::mkdtemp(pattern.data());
  std::filesystem::current_path(folder_);
  stream_ = ::open_memstream(&buffer_, &bufferSize_);
  SetPrintTarget(stream_);
  Restart();
}

TestWorld::~TestWorld() {
  ResetGlobals();
  SetPrintTarget(stdout);
  std::fclose(stream_);
  std::free(buffer_);
  std::filesystem::current_path(oldFolder_);
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

void TestWorld::ResetGlobals() {
  StopSlowMotion();
  AbandonStartUp();
  Menus().Reset();
  Objects().Reset();
  ResetStartUp();
  GetOptions() = {};
  EndMatch();
  GalePhysics::ResetGeneratorHost();
  GalePhysics::SetStepObserver(nullptr);
  ClearFileCache();
  Time() = GameTime{};
  SeedRandom(kFirstSeed);
  ClearPauseReasons();
  ClearSelection();
  Input::Reset();
}

void TestWorld::Restart() {
  ResetGlobals();
  BuildWorld();
  RegisterScript(HookScript::kName, CreateOwned<HookScript>);
  Time().physicsStep = Time().frameStep * kPhysicsShare;
}

GameObject& TestWorld::Add(std::string_view name, const Vec3& position) {
  GameObject& object = *Objects().GetObject(Objects().CreateObject());
  object.name = name;
  object.GetTransform().position = position;
  object.GetTransform().Rebuild();
  return object;
}

namespace {

template <class Shape>
void AddBodyAndCollider(GameObject& object, std::unique_ptr<Shape> shape, const BodyOptions& options) {
  object.GetTransform().orientation = QuaternionFromZ(options.angle);
  object.GetTransform().Rebuild();
  if (options.body) {
    RigidBody& body = object.Insert(std::make_unique<RigidBody>());
    body.velocity = options.velocity;
    body.acceleration = options.acceleration;
    body.angularVelocity = options.angularVelocity;
    body.inverseMass = options.inverseMass;
    body.damping = options.damping;
    body.rotationLocked = options.locked;
  }
  shape->ghost = options.ghost;
  shape->collisionGroup = options.group;
  object.Insert(std::move(shape));
}

}  // namespace

GameObject& TestWorld::AddSphere(std::string_view name, const Vec3& position, const BodyOptions& options) {
  GameObject& object = Add(name, position);
  AddBodyAndCollider(object, std::make_unique<SphereCollider>(options.radius, options.restitution), options);
  return object;
}

GameObject& TestWorld::AddBox(std::string_view name, const Vec3& position, const BodyOptions& options) {
  GameObject& object = Add(name, position);
  AddBodyAndCollider(object, std::make_unique<BoxCollider>(options.halfExtents * 2.0f, options.restitution), options);
  return object;
}

void TestWorld::Step(int subSteps) {
  for (int i = 0; i < subSteps; ++i) GalePhysics::StepPhysics();
}

void TestWorld::RunFrame() { GalePhysics::RunSubSteps(); }

std::string TestWorld::text() {
  std::fflush(stream_);
  return {buffer_ + textStart_, bufferSize_ - textStart_};
}

void TestWorld::ClearText() {
  std::fflush(stream_);
  textStart_ = bufferSize_;
}

void TestWorld::WriteFile(const std::string& name, std::string_view content) {
  // A file that is overwritten is flushed to the disk on some file systems, which costs milliseconds each time.
  std::filesystem::remove(name);
  std::ofstream(name, std::ios::binary) << content;
}

std::string TestWorld::ReadFile(const std::string& name) {
  std::ostringstream content;
  content << std::ifstream(name, std::ios::binary).rdbuf();
  return content.str();
}

Vec3& PositionOf(GameObject& object) { return object.GetTransform().position; }
RigidBody& BodyOf(GameObject& object) { return *object.Get<RigidBody>(); }

void HookScript::Serialize(Serializer& writer) const { writer.WriteString("level", level); }

void HookScript::Deserialize(Serializer& reader) {
  level = reader.ReadString();
  if (!level.empty()) Objects().LoadLevel(level);
}

HookScript& AddHook(GameObject& object) {
  ScriptBox* box = object.Get<ScriptBox>();
  if (box == nullptr) box = &object.Insert(std::make_unique<ScriptBox>());
  return static_cast<HookScript&>(box->AddScript(std::make_unique<HookScript>()));
}

int Count(std::string_view whole, std::string_view part) {
  int count = 0;
  for (auto at = whole.find(part); at != std::string_view::npos; at = whole.find(part, at + part.size())) ++count;
  return count;
}

std::string WithoutIds(std::string_view text) {
  std::istringstream lines{std::string(text)};
  std::string kept;
  for (std::string line; std::getline(lines, line);) {
    const bool blockOfId =
        line.size() > 3 && line.ends_with(": {") && line[line.size() - 4] >= '0' && line[line.size() - 4] <= '9';
    if (!blockOfId && line.find("generator ID: ") == std::string::npos && line.find("My ID: ") == std::string::npos)
      kept += line + '\n';
  }
  return kept;
}

std::string Document(const std::vector<GameObject*>& objects) {
  Serializer writer;
  writer.OpenForWrite("document");
  const auto write = [&](GameObject& object) {
    writer.BeginBlock(object.id);
    object.Serialize(writer);
    writer.EndBlock();
  };
  if (GameObject* host = GalePhysics::GetGeneratorLinks().BeginSave()) write(*host);
  for (GameObject* object : objects)
    if (object->name != "AForceBox") write(*object);
  writer.Close();
  std::ostringstream content;
  content << std::ifstream("document", std::ios::binary).rdbuf();
  return content.str();
}
