#include "tools/lint/hazard_rules.h"

#include "tools/lint/level_file.h"

namespace {

struct NamedArchetype {
  const char* script;
  const char* archetype;
};
constexpr NamedArchetype kArchetypes[] = {{"broadside", "cannonball"},
                                          {"fountain", "cannonball"},
                                          {"makeawhale", "cannonball"},
                                          {"sandlogic", "sandpoof"},
                                          {"stunsonhit", "stunstars"}};

// They act on contacts, which a ghost never has.
constexpr const char* kNeedSolid[] = {"squishy", "sandlogic", "barnaclelogic", "onewayintostage", "stunsonhit"};

}  // namespace

void CheckHazards(const LintObject& object, const std::string& folder, LintReport& report) {
  for (const auto& [script, archetype] : kArchetypes)
    if (const LintBlock* block = object.FindScript(script); block != nullptr && !HoldsAnObject(folder, archetype))
      report.Fault(block->line, "missing-archetype",
                   "it needs the archetype \"" + std::string(archetype) + "\", which is missing here or empty");
  for (const char* script : kNeedSolid)
    if (const LintBlock* block = object.FindScript(script); block != nullptr && !HasCollider(object, false))
      report.Fault(block->line, "not-solid", "it acts on touches: give the object a collider that is no ghost");
  if (const LintBlock* vortex = object.FindScript("vortex"))
    if (object.Find("SphereCollider") == nullptr || !HasCollider(object, true))
      report.Fault(vortex->line, "not-a-ghost",
                   "it acts on overlaps: give the object a SphereCollider that is a ghost");
  if (const LintBlock* barnacle = object.FindScript("barnaclelogic"); barnacle != nullptr && object.Find("GivePoints"))
    report.Fault(barnacle->line, "barnacle-prize", "a whale's coming removes what has GivePoints: remove it");
  if (const LintLine* interval = ValueOf(object.FindScript("broadside"), "fireInterval");
      interval != nullptr && !(NumberOf(*interval) > 0.0f))
    report.Fault(interval->number, "fire-interval", "must be above 0 seconds, or it never pauses");
}
