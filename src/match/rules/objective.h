// A rule of the match: a title, a time and a way to score. Rules run one after another (see objective_manager.h), are
// made by name (see objective_factory.h) and stay in the manager's list after they have run. A derived rule that
// replaces Begin or End calls the base's in the place where its own order needs it.
#pragma once

#include <cstdint>
#include <string>

class Serializer;
struct CollisionPair;
struct Event;
namespace GalePhysics {
struct Contact;
}

class Objective {
 public:
  /// `title`: shown when it begins, empty for none; `seconds`: game time that it runs.
  Objective(std::string title, int seconds) : explanatoryText(std::move(title)), runtime(seconds) {}
  Objective(const Objective&) = delete;
  Objective& operator=(const Objective&) = delete;
  virtual ~Objective() = default;

  /// Shows the title and starts the slow motion that lets everybody read it. What is made before it is part of the slow
  /// motion, what is made after it moves on through it.
  virtual void Begin();
  /// One running frame of `step` seconds of game time, from the frame of Begin to the one before End.
  virtual void Update(float step) = 0;
  /// Takes the title away and ends the slow motion. Not called when the match is over before the rule is.
  virtual void End();
  /// What players overlap and touch: their own notices, so two players who meet tell it twice.
  virtual void OnCollision(const CollisionPair& /*pair*/) {}
  virtual void OnContact(const GalePhysics::Contact& /*contact*/) {}
  virtual void HandleEvent(const Event& /*event*/) {}
  /// Writes first the type (WriteType), then the rule's own values.
  virtual void Serialize(Serializer& writer) const { WriteType(writer); }
  /// Reads the rule's own values; the type has been read.
  virtual void Deserialize(Serializer& /*reader*/) {}

  bool IsActive() const { return active_; }

  std::string explanatoryText;  ///< the title; it explains nothing
  std::string typeName;         ///< the factory's name for it; set by CreateObjective
  int runtime;                  ///< seconds of game time; files do not hold it except for "NULL"

 protected:
  /// The "Objective" line by which the manager's reader finds the type again.
  void WriteType(Serializer& writer) const;

 private:
  void ShowTitle();

  std::uint32_t titleId_ = 0;
  bool active_ = false;
};
