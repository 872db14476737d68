#include <algorithm>
#include <initializer_list>
#include <map>

#include "lint/level_rules.h"

namespace {

struct Generator {
  std::string_view name;
  int line;
  int place;  // in the host's order
  bool pushes = false;
  bool hangs = false;
};

bool IsGenerator(const LintBlock& script) { return ValueOf(&script, "My ID") != nullptr; }

bool Reads(const LintBlock& block, std::string_view name, std::initializer_list<std::string_view> values) {
  const auto& lines = block.Find(name);
  return std::equal(lines.begin(), lines.end(), values.begin(), values.end(),
                    [](const LintLine* line, std::string_view value) { return line->value == value; });
}

// As the game makes and saves it: nothing else of it is kept.
bool IsPlainHost(const LintObject& host) {
  const LintBlock* transform = host.Find("Transform");
  return host.core && transform != nullptr && host.components.size() == 2 &&
         Reads(*transform, "position", {"0", "0", "0"}) && Reads(*transform, "orientation", {"1", "0", "0", "0"}) &&
         Reads(*transform, "matrix", {"1", "0", "0", "0", "1", "0", "0", "0", "1", "0", "0", "0"}) &&
         Reads(*transform, "graphics scale", {"1", "1", "1"}) && !host.scripts.empty() &&
         host.scripts.front().name == "patricidal" &&
         std::all_of(host.scripts.begin() + 1, host.scripts.end(), IsGenerator);
}

class GeneratorRules {
 public:
  explicit GeneratorRules(const LintContext& context) : level_(context.level), report_(context.report) {}

  void Run() {
    for (const LintObject& object : level_.objects) {
      CheckPlace(object);
      for (const LintBlock& script : object.scripts) Define(script);
      if (const LintBlock* body = object.Find("RigidBody")) CheckBody(*body);
    }
    for (const auto& [id, generator] : generators_) CheckUse(generator);
  }

 private:
  void CheckPlace(const LintObject& object) {
    const bool first = &object == &level_.objects.front();
    if (object.IsHost()) {
      if (!first || !IsPlainHost(object))
        report_.Say(object.line, "host",
                    "it must be the first object, Core, at the origin, with patricidal and then generators alone");
      return;
    }
    for (const LintBlock& script : object.scripts) {
      if (script.name == "patricidal") report_.Say(script.line, "host", "it removes what is not the host: remove it");
      if (IsGenerator(script))
        report_.Say(script.line, "generator-place",
                    "the game saves it on the host: move it to a first object \"AForceBox\", behind patricidal");
    }
  }

  void Define(const LintBlock& script) {
    const LintLine* id = ValueOf(&script, "My ID");
    if (id == nullptr) return;
    const int place = static_cast<int>(generators_.size());
    if (!generators_.emplace(id->value, Generator{script.name, script.line, place}).second)
      report_.Say(id->number, "repeated-generator", "My ID must differ from that of the generators before it");
  }

  Generator* Find(const LintLine& id) {
    const auto found = generators_.find(id.value);
    if (found != generators_.end()) return &found->second;
    report_.Say(id.number, "unknown-generator", "no generator before it has the ID " + std::string(id.value));
    return nullptr;
  }

  void CheckBody(const LintBlock& body) {
    for (const LintLine* id : body.generatorIds[0])
      if (Generator* generator = Find(*id)) generator->pushes = true;
    int last = -1;
    for (const LintLine* id : body.generatorIds[1]) {
      Generator* spring = Find(*id);
      if (spring == nullptr) continue;
      if (spring->name != "spring")
        report_.Say(id->number, "spring-base", "it is no spring: only springs hang on a body");
      else if (spring->hangs)
        report_.Say(id->number, "spring-base", "the spring hangs on a body already");
      else if (spring->place < last)
        report_.Say(id->number, "spring-base", "list the springs in the order in which the host holds them");
      spring->hangs = true;
      last = spring->place;
    }
  }

  // Pullers are left over from matches, and bodies take them up while a match runs.
  void CheckUse(const Generator& generator) {
    if (generator.name == "wobblypuller") return;
    if (!generator.pushes)
      report_.Say(generator.line, "unread-generator", "no body names it: it pushes nothing");
    else if (generator.name == "spring" && !generator.hangs)
      report_.Say(generator.line, "loose-spring", "no body says that it hangs there: it pulls nothing");
  }

  const LintLevel& level_;
  LintReport& report_;
  std::map<std::string_view, Generator> generators_;  // by ID
};

}  // namespace

void CheckGenerators(const LintContext& context) { GeneratorRules(context).Run(); }
