// A match on a stage of the test's own: the controller with its segments and rules, and whatever files the test wrote.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/game_time.h"
#include "core/script_box.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "folders.h"
#include "graphics/sprite.h"
#include "match/episode/new_game.h"
#include "match/score/point_bubble.h"
#include "physics/sphere_collider.h"
#include "scripted_scene.h"

class EpisodeScene : public ScriptedScene {
 public:
  static inline const std::string kSegmentsEnd = "SentinelSegment: NoMoreSegments\n";

  /// Nobody moves by himself, so the random stream belongs to the test.
  EpisodeScene() { ConnectAllPads(); }

  /// A file of one object of that name; `components` in the words of the format, its Transform first.
  static std::string File(std::string_view name, std::string_view components) {
    return "{\n\t1: {\n\t\tName: " + std::string(name) + "\n\t\tCore: false\n" + std::string(components) + "\t}\n}\n";
  }
  /// Has a component or a rule read these values, as from a file.
  template <class T>
  static void ReadValues(T& target, const std::string& values) {
    const std::string text = "{\n" + values;
    Serializer reader;
    ASSERT_TRUE(reader.OpenText("values", text));
    target.Deserialize(reader);
  }
  static std::string Box(std::string_view scripts) {
    return "\t\tComponent: \"ScriptBox\" {\n" + std::string(scripts) + "\t\t}\n";
  }
  /// The script of that name, its values one a line.
  static std::string ScriptText(std::string_view name, std::string_view values) {
    return "\t\t\tComponent: \"" + std::string(name) + "\" {\n" + std::string(values) + "\t\t\t}\n";
  }
  /// Segments without turn or shift.
  static std::string Segments(const std::vector<std::pair<std::string, float>>& segments) {
    std::string text = "number of segments: " + std::to_string(segments.size()) + "\n";
    for (const auto& [piece, seconds] : segments)
      text +=
          "levelName_: " + piece + "\nduration_: " + std::to_string(seconds) + "\nrotationAngle_: 0\ndistance_: 0\n";
    return text + kSegmentsEnd;
  }
  static std::string Objectives(const std::vector<std::string>& types) {
    std::string text = "Sections: " + std::to_string(types.size()) + "\n";
    for (const std::string& type : types) text += "Objective: " + type + "\n";
    return text + "No more objectives: Done\n";
  }

  static void CopyShipped(std::initializer_list<const char*> names) {
    for (const char* name : names) std::filesystem::copy_file(std::filesystem::path(GameFolder()) / name, name);
  }
  /// Starts a match with a controller of these values.
  void Start(const std::string& segments, const std::string& objectives) {
    world.WriteFile("level1", File("segmentmanager", Box(ScriptText("SegmentManager", segments) +
                                                         ScriptText("ObjectiveManager", objectives))));
    NewGame();
  }
  void OnEvent(std::string_view text) override { log.emplace_back(frame, text); }
  /// The frames in which this happened.
  std::vector<int> FramesOf(std::string_view event) const {
    std::vector<int> frames;
    for (const auto& [when, text] : log)
      if (text == event) frames.push_back(when);
    return frames;
  }
  static GameObject* Find(std::string_view name) { return Objects().FindObjectByName(name); }
  static std::vector<GameObject*> FindAll(std::string_view name) {
    std::vector<GameObject*> found;
    for (const auto& object : Objects().GetObjects())
      if (object->alive && object->name == name) found.push_back(object.get());
    return found;
  }
  static bool IsGhost(const GameObject& object) { return object.Get<GalePhysics::SphereCollider>()->ghost; }
  static int CountObjects(std::string_view name) { return static_cast<int>(FindAll(name).size()); }

  std::vector<std::pair<int, std::string>> log;
};

class EpisodeTest : public EpisodeScene, public ::testing::Test {
 public:
  static constexpr float kStep = 0.0085f;  // seconds of game time a frame
  using EpisodeScene::Run;

  template <class T, class... Values>
  static T& Attach(GameObject& object, Values... values) {
    ScriptBox* box = object.Get<ScriptBox>();
    if (box == nullptr) box = &object.Insert(std::make_unique<ScriptBox>());
    return static_cast<T&>(box->AddScript(std::make_unique<T>(values...)));
  }
};

/// The four players and their displays, but nothing that they play by.
class PlayersTest : public EpisodeTest {
 public:
  PlayersTest() {
    SetupMatch();
    Objects().RemoveDeadObjects();
  }
  static GameObject& Player(int index) { return *GetPlayerObject(index); }
  long long Awarded() const { return GetPointsAwarded() - awardedBefore_; }

 private:
  long long awardedBefore_ = GetPointsAwarded();
};

/// An object that carries the script under test, in a scene without a match.
class ScriptTest : public EpisodeTest {
 public:
  ScriptTest() { CopyShipped({"cannonball", "sandpoof"}); }
  template <class T, class... Values>
  T& Carry(Values... values) {
    return Attach<T>(holder, values...);
  }
  /// By its name in files.
  void Carry(const char* name) { holder.Get<ScriptBox>()->AddScript(name); }
  void Update(int updates) {
    for (int i = 0; i < updates; ++i) holder.Update(kStep);
  }

  // It meets no cannonball, as nothing does that fires them.
  GameObject& holder = world.AddSphere("holder", {}, {.inverseMass = 0.0f, .group = 0});

 private:
  ScriptBox& box_ = holder.Insert(std::make_unique<ScriptBox>());
};
