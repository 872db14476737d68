// The component that carries an object's scripts, in the order in which they were added, and passes everything on to
// them. Scripts may be added while the box walks its list: they hear the rest of the walk.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "core/component.h"
#include "core/script_registry.h"

class ScriptBox final : public Component {
 public:
  static constexpr Kind kKind = Kind::kScriptBox;

  ScriptBox() = default;
  /// Destroys the owned scripts in list order.
  ~ScriptBox() override;

  void Update(float step) override;
  void Serialize(Serializer& writer) override;
  /// Reads scripts up to and including the box's closing line. An unregistered one gets a message and is skipped.
  void Deserialize(Serializer& reader) override;
  void AddToTweakBar(FieldBar& bar) override;
  void HandleEvent(const Event& event) override;
  void OnCollision(const CollisionPair& pair) override;
  void OnContact(const GalePhysics::Contact& contact) override;
  void GiveBack() override;
  void TakeAgain() override;

  /// Appends a script, sets its owner and calls its Initialize. The box must be in its object already.
  Script& AddScript(std::unique_ptr<Script> script);
  /// The same by registry name; an unknown one gets a message and gives null.
  Script* AddScript(std::string_view registryName);
  /// The first script of that exact name, or null.
  Script* GetScript(std::string_view name) const;
  std::size_t GetScriptCount() const { return entries_.size(); }

  /// Hands an owned script out of the list to the caller; null for one that it does not own.
  std::unique_ptr<Script> TakeScript(const Script& script);
  /// Takes all scripts off the list without destroying them: they rest until the box itself goes. For a script that
  /// must empty the box it is running in.
  void RetireScripts();

 private:
  struct Entry {
    Script* script;
    std::unique_ptr<Script> owned;  // null: the script lives elsewhere and keeps its owner
  };
  void Attach(NewScript created);

  std::vector<Entry> entries_;
  std::vector<Entry> retired_;
};

/// The script `scriptName` of the first alive object called `objectName`; null when either is missing.
Script* FindScript(std::string_view objectName, std::string_view scriptName);

/// Delivers an event to the scripts of the first alive object called `objectName`; dropped when it has none.
void SendEvent(std::string_view objectName, const Event& event);
