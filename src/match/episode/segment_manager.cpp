#include "match/episode/segment_manager.h"

#include <algorithm>
#include <limits>

#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/object_manager.h"
#include "core/pause.h"
#include "core/platform.h"
#include "core/print.h"
#include "core/run_log.h"
#include "core/script_box.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "input/gamepad.h"
#include "match/match_controller.h"
#include "physics/rigid_body.h"
#include "scripts/props/death_timer.h"

namespace {

constexpr char kNameKey[] = "levelName_";
constexpr char kSentinelKey[] = "SentinelSegment";

// A count that lies loses no segment and invents none.
bool AnotherFollows(const Serializer& reader, std::size_t read, int count) {
  if (!reader.NextIsValue() || reader.NextKey() == kSentinelKey) return false;
  return static_cast<int>(read) < count || reader.NextKey() == kNameKey;
}

// The pieces that are being read now, outermost first.
std::vector<std::string>& PiecesBeingRead() {
  static std::vector<std::string> pieces;
  return pieces;
}

Segment ReadSegment(Serializer& reader) {
  Segment segment;
  segment.levelName = reader.ReadString();
  segment.duration = reader.ReadFloat();
  if (!(segment.duration > 0.0f)) {
    Print("%s: the segment \"%s\" lasts no time\n", reader.Where().c_str(), segment.levelName.c_str());
    segment.duration = 0.0f;
  }
  segment.rotationAngle = reader.ReadFloat();
  segment.distance = reader.ReadFloat();
  return segment;
}

void Place(const std::vector<GameObject*>& piece, const Segment& segment) {
  const Matrix33 turn = RotationAboutZ(segment.rotationAngle);
  const Vec3 shift = turn * Vec3{0.0f, segment.distance, 0.0f};
  for (GameObject* object : piece) {
    Transform& transform = object->GetTransform();
    transform.position = turn * transform.position + shift;
    if (auto* body = object->Get<GalePhysics::RigidBody>()) body->velocity = turn * body->velocity;
  }
}

}  // namespace

void SegmentManager::Update(float step) {
  if (!owner->alive || !active_ || !IsRunning()) return;
  const float duration = segments_[static_cast<std::size_t>(currentSegment_)].duration;
  elapsed_ += step;
  if (elapsed_ >= duration) {
    elapsed_ -= duration;
    ++currentSegment_;
    if (IsRunning()) BeginSegment();
  }
  WatchPads();
}

// Loads first and acts on the segment's copy afterwards: reading a piece may run any script.
void SegmentManager::BeginSegment() {
  segments_[static_cast<std::size_t>(currentSegment_)].begun = true;
  const Segment segment = segments_[static_cast<std::size_t>(currentSegment_)];
  auto& reading = PiecesBeingRead();
  if (std::find(reading.begin(), reading.end(), segment.levelName) != reading.end()) {
    Print("the piece \"%s\" brings itself: its own episode does not run\n", segment.levelName.c_str());
    active_ = false;
    return;
  }
  LogEvent("segment begin %s", segment.levelName.c_str());
  reading.push_back(segment.levelName);
  const std::vector<GameObject*> piece = Objects().LoadLevel(segment.levelName);
  reading.pop_back();
  pieceIds_.clear();
  for (const GameObject* object : piece) pieceIds_.push_back(object->id);
  for (const GameObject* object : piece)
    if (DeathTimer* timer = FindDeathTimer(*object)) timer->endTime = segment.duration;
  Place(piece, segment);
}

void SegmentManager::WatchPads() {
  const int pads = GetPlatform().GetJoystickCount();
  if (padCount_ == kPadsUnknown) padCount_ = pads;
  if (pads < padCount_) padLost_ = true;
}

void SegmentManager::CheckReplugged() {
  if (GetPlatform().GetJoystickCount() != padCount_) return;
  padLost_ = false;
  ReleasePause("Controller unplugged");
  Input::ReopenGamepads();
}

float SegmentManager::MeasureEpisode() {
  episodeLength_ = 0.0f;
  for (const Segment& segment : segments_) episodeLength_ += segment.duration;
  return episodeLength_;
}

void SegmentManager::Serialize(Serializer& writer) const {
  writer.WriteInt("number of segments", static_cast<int>(segments_.size()));
  for (const Segment& segment : segments_) {
    writer.WriteString(kNameKey, segment.levelName);
    writer.WriteFloat("duration_", segment.duration);
    writer.WriteFloat("rotationAngle_", segment.rotationAngle);
    writer.WriteFloat("distance_", segment.distance);
  }
  writer.WriteString(kSentinelKey, "NoMoreSegments");
}

void SegmentManager::Deserialize(Serializer& reader) {
  elapsed_ = 0.0f;
  active_ = true;
  const int count = reader.ReadInt();
  const std::string where = reader.Where();
  while (AnotherFollows(reader, segments_.size(), count)) segments_.push_back(ReadSegment(reader));
  if (static_cast<int>(segments_.size()) != count)
    Print("%s: says %d segments, %zu follow\n", where.c_str(), count, segments_.size());
  reader.ReadString();
  if (!segments_.empty() && !reader.IsInMemory()) BeginSegment();
}

void SegmentManager::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup("SegmentManager");
  bar.Add("episode length", &episodeLength_);
  bar.Add("active", &active_);
  bar.AddLimited("current segment", &currentSegment_, 0, static_cast<double>(segments_.size()));
  bar.AddButton("Test Episode", [this] { RestartEpisode(); });
  for (std::size_t i = 0; i < segments_.size(); ++i) AddSegmentToBar(bar, i);
  const auto remove = [this](int place) { RemoveSegment(static_cast<std::size_t>(place)); };
  bar.AddInsertButton("Add Segment", "Add Segment", {[this](int) { return AppendSegment(); }, remove});
  bar.EndGroup();
}

void SegmentManager::AddSegmentToBar(FieldBar& bar, std::size_t index) {
  Segment& segment = segments_[index];
  const std::string number = std::to_string(index + 1);
  bar.BeginGroup("Segment" + number);
  bar.Add("levelName" + number, &segment.levelName);
  bar.AddLimited("duration", &segment.duration, 0.0, std::numeric_limits<float>::max());
  bar.Add("rotation", &segment.rotationAngle);
  bar.Add("distance", &segment.distance);
  bar.EndGroup();
  const std::string label = "Insert Segment Before " + number;
  bar.AddInsertButton(label, label,
                      {[this, index](int) { return InsertSegment(index); },
                       [this](int place) { RemoveSegment(static_cast<std::size_t>(place)); }});
}

// The running segment goes on running, at its new place.
int SegmentManager::InsertSegment(std::size_t index) {
  segments_.emplace(segments_.begin() + static_cast<std::ptrdiff_t>(index));
  if (currentSegment_ >= static_cast<int>(index)) ++currentSegment_;
  return static_cast<int>(index);
}

// After an episode that is over its time runs next; its piece comes with Test Episode.
int SegmentManager::AppendSegment() {
  segments_.emplace_back();
  return static_cast<int>(segments_.size()) - 1;
}

// Another one that runs goes on running; after this one the next begins.
void SegmentManager::RemoveSegment(std::size_t index) {
  if (index >= segments_.size()) return;
  const bool runs = currentSegment_ == static_cast<int>(index) && segments_[index].begun;
  segments_.erase(segments_.begin() + static_cast<std::ptrdiff_t>(index));
  if (currentSegment_ > static_cast<int>(index)) --currentSegment_;
  if (!runs) return;
  RemovePiece();
  elapsed_ = 0.0f;
  if (IsRunning()) BeginSegment();
}

// What the present piece brought goes, as far as it would go by its time.
void SegmentManager::RemovePiece() {
  for (const std::uint32_t id : pieceIds_) {
    GameObject* object = Objects().GetObject(id);
    if (object != nullptr && FindDeathTimer(*object) != nullptr) object->alive = false;
  }
}

void SegmentManager::RestartEpisode() {
  RemovePiece();
  currentSegment_ = 0;
  elapsed_ = 0.0f;
  active_ = true;
  if (IsRunning()) BeginSegment();
}

SegmentManager* FindSegmentManager() {
  return static_cast<SegmentManager*>(FindScript(kMatchController, "SegmentManager"));
}
