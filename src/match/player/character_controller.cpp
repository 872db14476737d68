#include "match/player/character_controller.h"

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
#include "match/player/hit_effects.h"
#include "match/players.h"
#include "match/score/point_bubble.h"
#include "physics/math/trigonometry.h"
#include "physics/rigid_body.h"

namespace {

constexpr float kAimThresholdSquared = 0.0625f;          // a stick tilted less than 0.25 keeps the last aim
constexpr float kStartHalfAngle = -1.2217305898666382f;  // radians
constexpr float kPictureAngle = 2.4434611797332764f;     // radians between a picture's travel and its top, 140 degrees
constexpr float kHalfPi = kPi / 2.0f;
constexpr float kKeySpeed = 3.0f;     // launch by key, units per body second along each axis
constexpr float kPilotSpeed = 8.0f;   // largest pilot launch along each axis
constexpr float kPilotPause = 0.5f;   // seconds of game time at least between two pilot launches
constexpr int kPilotPauseSpread = 3;  // game seconds more at most
constexpr char kUnknownDisplay[] = "Errar";

// Turns by an angle that is halved already.
void TurnTo(GameObject& object, float halfAngle) {
  object.GetTransform().orientation = {Cos(halfAngle), 0.0f, 0.0f, Sin(halfAngle)};
}

float RandomSpeed() { return (RandomOver(kRandomMax / 2) - 1.0f) * kPilotSpeed; }

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
  autoPlay_ = !pad.IsConnected() && (controller_ != 0 || IsDemoMode());
  ReadDeveloperKeys();
  SeatMouse(pad);
  ReadAim(pad);
  if (ignoreStuns_) stunned = false;
  if (stunned) {
    budgetRules_.charging = false;
    chargeRules_.Drop();
    return;
  }
  TurnTo(*owner, (Atan2(aim_.y, aim_.x) - kPictureAngle + kPi) * 0.5f);
  if (autoPlay_) {
    DropCharge();  // the pad was pulled while its player charged
    FlyByComputer(step);
    return;
  }
  if (budgetRules_.locked) return;
  if (keyboardEnabled_) FlyByKeyboard();
  FlyByPad(pad);
}

void CharacterController::DropCharge() {
  if (!chargeRules_.charging) return;
  chargeRules_.Drop();
  Audio::StopCharge(controller_);
}

// Whoever sits down at a pad takes the seat, and what the mouse has charged is lost.
void CharacterController::SeatMouse(const Gamepad& pad) {
  if (controller_ == 0 && charge_ && !autoPlay_ && !pad.IsConnected()) {
    mouse_.Update();
    return;
  }
  if (mouse_.IsHeld()) DropCharge();
  mouse_.Leave();
}

void CharacterController::FlyByPad(const Gamepad& pad) {
  const Flight flight = {*owner, currencyName_, controller_, aim_};
  if (charge_) {
    const bool charged = chargeRules_.charging;
    chargeRules_.Fly(pad.IsTriggerHeld() || mouse_.IsHeld(), flight);
    // Keys hop with what is left of a charge, and beside the mouse they shall go on as they are.
    if (mouse_.HasJoined() && charged && !chargeRules_.charging) chargeRules_.force = ChargeRules::kFullCharge;
  } else if (budgetRules_.Fly(pad, flight))
    Launch(aim_);
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
  if (mouse_.HasJoined() && !Input::GetPointer().onBars)
    aim_ = lastAim_ = MouseSeat::AimFrom(owner->GetTransform().position, lastAim_);
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
    autoPlayTimer_ = RandomOver(kRandomMax / kPilotPauseSpread) + kPilotPause;
  }
  autoPlayTimer_ -= step;
}

void CharacterController::FlyByKeyboard() {
  if (float& force = Force(); force != 0.0f) {
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
    if (!freeLaunch_ && Length(v) > force) {
      v = Normalised(v) * force;
      force = 0.0f;
    }
    if (count == 1 || angleSum != 0.0f) TurnTo(*owner, (angleSum / static_cast<float>(count) - kPictureAngle) * 0.5f);
    if (!(v == Vec3{})) Launch(v);
  }
  if (!Input::IsLetterTriggered('r')) return;
  // Under charge rules no gauge ever says that it is done, so nobody waits for it.
  if (charge_)
    SendEvent(currencyName_, Event(ForceEvents::kReset));
  else
    budgetRules_.RequestRefill(currencyName_);
}

void CharacterController::HandleEvent(const Event& event) {
  using namespace ForceEvents;
  if (event.name == kReturn) {
    const auto* answer = Payload<PlayerAmount>(event);
    if (answer != nullptr && answer->player == controller_) Force() = answer->amount;
  } else if (event.name == kFinishedReset) {
    SendEvent(currencyName_, Event(kRequest, &controller_));
    budgetRules_.locked = false;
  } else if (event.name == kFire) {
    const float* strength = Payload<float>(event);
    if (strength == nullptr) return;
    aim_ *= *strength;
    Launch(aim_);
  } else if (event.name == kCurrent) {
    if (const float* amount = Payload<float>(event)) Force() = *amount;
  }
}

void CharacterController::OnCollision(const CollisionPair& pair) {
  if (Script* objectives = FindObjectives()) objectives->OnCollision(pair);
}

void CharacterController::OnContact(const GalePhysics::Contact& contact) {
  ShowRipple(contact);
  ShakeOnHardHit(*owner, contact);
  if (Script* objectives = FindObjectives()) objectives->OnContact(contact);
}

void CharacterController::AddPoints(int points, const Vec3& origin) {
  if (scoreName_ == kUnknownDisplay || points <= 0 || !IsPlayerIndex(controller_)) return;
  if (Objects().GetObject(scoreObjectId_) == nullptr) return;
  const Vec3& place = origin == Vec3{} ? owner->GetTransform().position : origin;
  CreatePointBubbles(points, controller_, place, scoreObjectId_);
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

CharacterController* FindController(const GameObject& object) {
  const auto* scripts = object.Get<ScriptBox>();
  return scripts == nullptr ? nullptr : static_cast<CharacterController*>(scripts->GetScript("CharacterController"));
}
