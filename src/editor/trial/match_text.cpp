#include "editor/trial/match_text.h"

#include <algorithm>
#include <memory>

#include "core/object_manager.h"
#include "core/script_box.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "match/match_controller.h"
#include "match/rules/objective_factory.h"

namespace {

constexpr int kFirstSection = 10;  // game seconds that the first rule has, whatever its own time
constexpr int kMostSections = 100;

int CountSections(const Objective& rule, float duration) {
  const int more = static_cast<int>((duration - static_cast<float>(kFirstSection)) / static_cast<float>(rule.runtime));
  return std::clamp(more + 2, 1, kMostSections);
}

}  // namespace

std::string MatchText(const std::string& piece, std::string_view rule, float duration) {
  const std::unique_ptr<Objective> objective = CreateObjective(rule);
  const int sections = CountSections(*objective, duration);
  Serializer writer;
  writer.OpenDocument();
  writer.BeginBlock(1);
  writer.WriteString("Name", kMatchController);
  writer.WriteBool("Core", false);
  GameObject().GetTransform().Serialize(writer);
  writer.BeginComponent("ScriptBox");
  writer.BeginComponent("SegmentManager");
  writer.WriteInt("number of segments", 1);
  writer.WriteString("levelName_", piece);
  writer.WriteFloat("duration_", duration);
  writer.WriteFloat("rotationAngle_", 0.0f);
  writer.WriteFloat("distance_", 0.0f);
  writer.WriteString("SentinelSegment", "NoMoreSegments");
  writer.EndBlock();
  writer.BeginComponent("ObjectiveManager");
  writer.WriteInt("Sections", sections);
  for (int i = 0; i < sections; ++i) objective->Serialize(writer);
  writer.WriteString("No more objectives", "Done");
  for (int block = 0; block < 3; ++block) writer.EndBlock();
  writer.EndDocument();
  return writer.TakeText();
}

std::vector<GameObject*> ObjectsOfLevel() {
  std::vector<GameObject*> objects;
  for (const auto& object : Objects().GetObjects())
    if (!object->core && object->alive) objects.push_back(object.get());
  return objects;
}

bool HasController(const std::vector<GameObject*>& objects) {
  return std::any_of(objects.begin(), objects.end(), [](const GameObject* object) {
    const auto* scripts = object->Get<ScriptBox>();
    return object->name == kMatchController && scripts != nullptr && scripts->GetScript("SegmentManager") != nullptr;
  });
}
