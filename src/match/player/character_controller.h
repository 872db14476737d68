// Steers one octopus: a gamepad, the keyboard or the computer pilot aims it and launches it by setting its velocity.
// How strong a launch may be is the gauge's word (see force_currency.h); the two know each other by name only.
#pragma once

#include <cstdint>
#include <string>

#include "core/script.h"
#include "input/gamepad.h"
#include "match/player/budget_rules.h"
#include "match/player/charge_rules.h"
#include "match/player/mouse_seat.h"
#include "match/score/point_earner.h"
#include "physics/math/vec3.h"

class CharacterController final : public Script, public PointEarner {
 public:
  CharacterController() = default;
  /// A player that charges. `playerIndex`: 0 to 3, also its gamepad.
  CharacterController(std::string scoreName, std::string currencyName, int playerIndex);

  void Update(float step) override;
  void Initialize() override;
  void HandleEvent(const Event& event) override;
  void OnCollision(const CollisionPair& pair) override;
  void OnContact(const GalePhysics::Contact& contact) override;
  void Serialize(Serializer& writer) const override;
  void Deserialize(Serializer& reader) override;
  const char* GetName() const override { return "CharacterController"; }

  /// Replaces the body's velocity (units per body second); under budget rules the gauge is told. Nothing without a
  /// body.
  void Launch(const Vec3& velocity);
  void AddPoints(int points, const Vec3& origin) override;

  const std::string& GetCurrencyName() const { return currencyName_; }

  bool stunned = false;  ///< while true the player has no control; others set and clear it

 private:
  void ReadDeveloperKeys();
  void ReadAim(const Gamepad& pad);
  void FlyByComputer(float step);
  void FlyByKeyboard();
  void FlyByPad(const Gamepad& pad);
  void SeatMouse(const Gamepad& pad);
  void DropCharge();
  /// What a launch may use up: the charge, or what is left of the budget.
  float& Force() { return charge_ ? chargeRules_.force : budgetRules_.force; }

  std::string scoreName_ = "Errar";
  std::string currencyName_ = "Errar";
  std::uint32_t scoreObjectId_ = 0;
  ChargeRules chargeRules_;
  BudgetRules budgetRules_;
  MouseSeat mouse_;
  bool autoPlay_ = true;
  bool freeLaunch_ = false;  // developer toggle
  bool keyboardEnabled_ = false;
  bool charge_ = true;  // charge rules, else budget rules
  bool initialised_ = false;
  bool ignoreStuns_ = false;    // developer toggle
  int controller_ = 0;          // player index
  float autoPlayTimer_ = 0.0f;  // seconds of game time to the pilot's next launch
  Vec3 aim_ = {1.0f, 0.0f, 0.0f};
  Vec3 lastAim_ = {1.0f, 0.0f, 0.0f};  // the last one that was long enough to mean something
};

/// The controller among the object's scripts, or null.
CharacterController* FindController(const GameObject& object);
