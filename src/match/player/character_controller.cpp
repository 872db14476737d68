#include "match/player/character_controller.h"

#include <cmath>
#include <utility>

#include "audio/audio.h"
#include "core/game_object.h"
#include "core/object_manager.h"
#include "core/random.h"
#include "core/run_log.h"
#include "core/script_box.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "input/input.h"
#include "match/match_controller.h"
#include "match/player/force_events.h"
#include "match/players.h"
#include "physics/rigid_body.h"

namespace {

constexpr float kAimThresholdSquared = 0.0625f;          // a stick tilted less than 0.25 keeps the last aim
constexpr float kStartHalfAngle = -1.2217305898666382f;  // radians
constexpr float kPictureAngle = 2.4434611797332764f;     // radians between a picture's travel and its top, 140 degrees
constexpr float kHalfPi = kPi / 2.0f;
constexpr float kKeySpeed = 3.0f;           // launch by key, units per second along each axis
constexpr float kPilotSpeed = 8.0f;         // largest pilot launch along each axis
constexpr float kPilotPause = 0.5f;         // seconds at least between two pilot launches
constexpr float kHalfRandom = 16383.0f;     // Random() over it, less 1, is -1 to 1
constexpr float kThirdOfRandom = 10922.0f;  // Random() over it is 0 to 3

// Turns by an angle that is halved already.
void TurnTo(GameObject& object, float halfAngle) {
  object.GetTransform().orientation = {std::cos(halfAngle), 0.0f, 0.0f, std::sin(halfAngle)};
}

float RandomSpeed() { return (static_cast<float>(Random()) / kHalfRandom - 1.0f) * kPilotSpeed; }

bool IsPressed(char letter, const char* arrow) {
  return Input::IsLetterTriggered(letter) || Input::IsKeyTriggered(arrow);
}

}  // namespace

CharacterController::CharacterController(std::string scoreName, std::string currencyName, int playerIndex)
    : scoreName_(std::move(scoreName)),
      currencyName_(std::move(currencyName)),
      autoPlay_(false),
      controller_(playerIndex) {}

void CharacterController::Initialize() {
  SetPlayerObject(controller_, owner->id);
  keyboardEnabled_ = controller_ == 0;
  if (const GameObject* score = Objects().FindObjectByName(scoreName_)) scoreObjectId_ = score->id;
  if (charge_)
    SendEvent(currencyName_, Event(ForceEvents::kSetCharge));
  else
    SendEvent(currencyName_, Event(ForceEvents::kRequest, &controller_));
  aim_.x = 1.0f;
  lastAim_.x = 1.0f;
  TurnTo(*owner, kStartHalfAngle);
  initialised_ = true;
}

void CharacterController::Update(float step) {
  // A dead player updates once more beside its successor and must neither act nor take its gauge's events.
  if (!owner->alive || !IsPlayerIndex(controller_)) return;
  if (!initialised_) Initialize();
  const Gamepad& pad = Input::GetGamepad(controller_);
  const bool wasCharging = charging_ && charge_;
  autoPlay_ = !pad.IsConnected() && (controller_ != 0 || IsDemoMode());
  ReadDeveloperKeys();
  ReadAim(pad);
  if (ignoreStuns_) stunned = false;
  if (stunned) {
    charging_ = false;
    DropCharge();
    return;
  }
  TurnTo(*owner, (std::atan2(aim_.y, aim_.x) - kPictureAngle + kPi) * 0.5f);
  if (autoPlay_) {
    if (wasCharging) {  // the pad was pulled while its player charged
      charging_ = false;
      DropCharge();
      Audio::StopCharge(controller_);
    }
    FlyByComputer(step);
    return;
  }
  if (locked_) return;
  if (keyboardEnabled_) FlyByKeyboard();
  charge_ ? FlyByCharge(pad) : FlyByBudget(pad);
}

void CharacterController::ReadDeveloperKeys() {
  if (Input::IsLetterTriggered('i')) {
    if (controller_ == 0 && Input::IsKeyDown("shift")) freeLaunch_ = !freeLaunch_;
    if (controller_ == 1 && Input::IsKeyDown("rshift")) freeLaunch_ = !freeLaunch_;
  }
  if (controller_ == 0 && Input::IsKeyDown("shift") && Input::IsLetterTriggered('g')) ignoreStuns_ = !ignoreStuns_;
}

void CharacterController::ReadAim(const Gamepad& pad) {
  const StickPosition stick = pad.LeftStick();
  aim_.x = stick.x;
  aim_.y = stick.y;
  if (SquaredLength(aim_) > kAimThresholdSquared)
    lastAim_ = aim_;
  else
    aim_ = lastAim_;
}

void CharacterController::Launch(const Vec3& velocity) {
  auto* body = owner->Get<GalePhysics::RigidBody>();
  if (body == nullptr) return;
  body->velocity = velocity;
  LogEvent("launch %s %.9g", owner->name.c_str(), static_cast<double>(Length(velocity)));
  if (charge_ || freeLaunch_) return;
  const ForceEvents::PlayerAmount used = {controller_, Length(velocity)};
  SendEvent(currencyName_, Event(ForceEvents::kUsed, &used));
}

// The pilot never charges, and its launches cost nothing.
void CharacterController::FlyByComputer(float step) {
  if (autoPlayTimer_ < 0.0f) {
    const float x = RandomSpeed();
    const float y = RandomSpeed();
    Launch({x, y, 0.0f});
    autoPlayTimer_ = static_cast<float>(Random()) / kThirdOfRandom + kPilotPause;
  }
  autoPlayTimer_ -= step;
}

void CharacterController::FlyByKeyboard() {
  if (force_ != 0.0f) {
    Vec3 v;
    float angleSum = 0.0f;
    int count = 0;
    const auto push = [&](float x, float y, float angle) {
      v += Vec3{x, y, 0.0f};
      angleSum += angle;
      ++count;
    };
    if (IsPressed('w', "arrowkeyup")) push(0.0f, kKeySpeed, kHalfPi);
    // Down is the one arrow that counts while it is held.
    if (Input::IsLetterTriggered('s') || Input::IsKeyDown("arrowkeydown")) push(0.0f, -kKeySpeed, 3.0f * kHalfPi);
    if (IsPressed('a', "arrowkeyleft")) push(-kKeySpeed, 0.0f, kPi);
    if (IsPressed('d', "arrowkeyright")) push(kKeySpeed, 0.0f, 0.0f);
    if (!freeLaunch_ && Length(v) > force_) {
      v = Normalised(v) * force_;
      force_ = 0.0f;
    }
    if (count == 1 || angleSum != 0.0f) TurnTo(*owner, (angleSum / static_cast<float>(count) - kPictureAngle) * 0.5f);
    if (!(v == Vec3{})) Launch(v);
  }
  if (Input::IsLetterTriggered('r')) RequestRefill();
}

void CharacterController::RequestRefill() {
  SendEvent(currencyName_, Event(ForceEvents::kReset));
  locked_ = true;
}

void CharacterController::FlyByBudget(const Gamepad& pad) {
  if (!pad.IsTriggerHeld()) {
    charging_ = true;
    return;
  }
  if (!charging_) {
    if (pad.IsButtonDown(Gamepad::kButtonA)) RequestRefill();
    return;
  }
  const float length = Length(aim_);
  if (length > force_) {
    aim_ = Normalised(aim_) * force_;
    force_ = 0.0f;
  } else {
    force_ -= length;
  }
  if (!(aim_ == Vec3{})) Launch(aim_);
  charging_ = false;
}

void CharacterController::HandleEvent(const Event& event) {
  using namespace ForceEvents;
  if (event.name == kReturn) {
    const auto* answer = Payload<PlayerAmount>(event);
    if (answer != nullptr && answer->player == controller_) force_ = answer->amount;
  } else if (event.name == kFinishedReset) {
    SendEvent(currencyName_, Event(kRequest, &controller_));
    locked_ = false;
  } else if (event.name == kFire) {
    const float* strength = Payload<float>(event);
    if (strength == nullptr) return;
    aim_ *= *strength;
    Launch(aim_);
  } else if (event.name == kCurrent) {
    if (const float* amount = Payload<float>(event)) force_ = *amount;
  }
}

void CharacterController::OnCollision(const CollisionPair& pair) {
  if (Script* objectives = FindObjectives()) objectives->OnCollision(pair);
}

void CharacterController::OnContact(const GalePhysics::Contact& contact) {
  ShowRipple(contact);
  ShakeOnHardHit(contact);
  if (Script* objectives = FindObjectives()) objectives->OnContact(contact);
}

void CharacterController::Serialize(Serializer& writer) const {
  writer.WriteString("ScoreID", scoreName_);
  writer.WriteString("CurrencyID", currencyName_);
  writer.WriteBool("AutoPlay", autoPlay_);
  writer.WriteInt("Controller", controller_);
  writer.WriteBool("Charge", charge_);
}

void CharacterController::Deserialize(Serializer& reader) {
  scoreName_ = reader.ReadString();
  currencyName_ = reader.ReadString();
  autoPlay_ = reader.ReadBool();
  controller_ = reader.ReadInt();
  charge_ = reader.ReadBool();
}
