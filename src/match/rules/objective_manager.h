// Runs the rules of a match one after another, each for its time, counts the last seconds of each down on the screen,
// and passes on to the running rule what the players meet. It stands on the match controller, after the SegmentManager,
// so that a new piece is there before a rule's slow motion begins.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/script.h"
#include "match/rules/objective.h"

class ObjectiveManager final : public Script {
 public:
  /// Makes the countdown's text, hidden; it goes with the manager.
  ObjectiveManager();
  ~ObjectiveManager() override;

  void Update(float step) override;
  void Initialize() override;
  void HandleEvent(const Event& event) override;
  void OnCollision(const CollisionPair& pair) override;
  void OnContact(const GalePhysics::Contact& contact) override;
  void Serialize(Serializer& writer) const override;
  /// A type that the factory does not know becomes a rule that does nothing, with a message;
  /// a count that does not fit what follows is taken as what is there, likewise.
  void Deserialize(Serializer& reader) override;
  void AddToTweakBar(FieldBar& bar) override;
  const char* GetName() const override { return "ObjectiveManager"; }

  /// Appends a rule to the sequence.
  void Add(std::unique_ptr<Objective> objective) { objectives_.push_back(std::move(objective)); }
  /// The running rule, or null.
  const Objective* GetCurrentObjective() const { return currentObjective_; }
  float GetElapsed() const { return elapsed_; }

 private:
  int AddNamedObjective(int place);
  void RemoveObjective(std::size_t place);
  bool IsAnyLeft() const { return nextIndex_ < objectives_.size(); }
  bool IsDone() const;
  void BeginWaiting();
  void BeginNext();
  void EndSection();
  void ShowCountdown();
  void HideCountdown();

  float episodeLength_ = 0.0f;  // game seconds of all segments
  float sectionTime_ = 0.0f;    // game seconds of the running section
  float elapsed_ = 0.0f;        // game seconds in it
  std::uint32_t countdownId_;
  Objective* currentObjective_ = nullptr;
  std::vector<std::unique_ptr<Objective>> objectives_;
  std::size_t nextIndex_ = 0;
  std::string objectiveName_;  // the type that the editor would add
};
