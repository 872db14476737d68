#include "physics/generator_host.h"

#include <unordered_map>
#include <vector>

#include "core/scene_state.h"
#include "core/script_box.h"
#include "core/serializer.h"

namespace GalePhysics {

namespace {

constexpr int kFirstGeneratorId = 42;
constexpr std::uint32_t kHostId = 1337;

std::unique_ptr<GameObject>& HostSlot() {
  static auto& slot = *new SceneState<std::unique_ptr<GameObject>>;
  return *slot;
}

class GeneratorLinks final : public LevelExtension {
 public:
  void BeginLoad() override { loading_.emplace_back(); }
  void EndLoad() override { loading_.pop_back(); }
  GameObject* BeginSave() override {
    nextId_ = kFirstGeneratorId;
    saved_.clear();
    return HostSlot().get();
  }

  int Save(const ForceGenerator& generator) { return saved_[&generator] = nextId_++; }
  int SavedId(const ForceGenerator& generator) const {
    const auto found = saved_.find(&generator);
    return found == saved_.end() ? 0 : found->second;
  }
  void Enter(int id, ForceGenerator& generator) {
    if (!loading_.empty()) loading_.back()[id] = &generator;
  }
  ForceGenerator* Find(int id) const {
    if (loading_.empty()) return nullptr;
    const auto found = loading_.back().find(id);
    return found == loading_.back().end() ? nullptr : found->second;
  }

 private:
  int nextId_ = kFirstGeneratorId;
  std::unordered_map<const ForceGenerator*, int> saved_;
  std::vector<std::unordered_map<int, ForceGenerator*>> loading_;  // innermost load last
};

GeneratorLinks& Links() {
  static GeneratorLinks links;
  return links;
}

}  // namespace

GameObject& GetGeneratorHost() {
  auto& host = HostSlot();
  if (!host) {
    host = std::make_unique<GameObject>();
    host->name = kGeneratorHostName;
    host->id = kHostId;
    host->core = true;
    // The copy of the host that opens every saved level dissolves by this script, which reading arms.
    host->Insert(std::make_unique<ScriptBox>()).AddScript("patricidal");
  }
  return *host;
}

ForceGenerator& AdoptForceGenerator(std::unique_ptr<ForceGenerator> generator) {
  ForceGenerator& adopted = *generator;
  GetGeneratorHost().Get<ScriptBox>()->AddScript(std::move(generator));
  return adopted;
}

std::unique_ptr<ForceGenerator> TakeForceGenerator(ForceGenerator& generator) {
  std::unique_ptr<Script> taken = GetGeneratorHost().Get<ScriptBox>()->TakeScript(generator);
  return std::unique_ptr<ForceGenerator>(static_cast<ForceGenerator*>(taken.release()));
}

int SavedGeneratorId(const ForceGenerator& generator) { return Links().SavedId(generator); }
ForceGenerator* LoadedGenerator(int id) { return Links().Find(id); }
LevelExtension& GetGeneratorLinks() { return Links(); }
std::size_t CountGenerators() { return GetGeneratorHost().Get<ScriptBox>()->GetScriptCount() - 1; }  // but "patricidal"
void ResetGeneratorHost() { HostSlot().reset(); }

void ForceGenerator::Serialize(Serializer& writer) const {
  writer.WriteInt("My ID", writer.IsInMemory() ? 0 : Links().Save(*this));
}
void ForceGenerator::Deserialize(Serializer& reader) { Links().Enter(reader.ReadInt(), *this); }

}  // namespace GalePhysics
