// The episode: level pieces that come one after another, each loaded beside what is there, turned and shifted into
// place. What a piece brings removes itself by its DeathTimer, which gets the segment's duration.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/script.h"

struct Segment {
  std::string levelName = "InvalidName";
  float duration = 10.0f;      ///< seconds of game time
  float rotationAngle = 0.0f;  ///< degrees about z, of places and velocities; orientations stay
  float distance = 0.0f;       ///< world units along the turned y axis
  bool begun = false;          ///< its turn has come; its piece is there unless it names the level it stands in
};

class SegmentManager final : public Script {
 public:
  void Update(float step) override;
  void Serialize(Serializer& writer) const override;
  /// Begins the first segment at once, before there is an owner. Durations below 0 are taken as 0, and a count that
  /// does not fit what follows as what is there, each with a message.
  void Deserialize(Serializer& reader) override;
  void AddToTweakBar(FieldBar& bar) override;
  const char* GetName() const override { return "SegmentManager"; }

  /// Game seconds of all segments together; also stores them as the episode's length.
  float MeasureEpisode();
  int GetCurrentSegment() const { return currentSegment_; }
  /// The objects of the piece that was brought last, those that are gone too.
  const std::vector<std::uint32_t>& GetPieceIds() const { return pieceIds_; }
  float GetElapsed() const { return elapsed_; }
  bool IsPadLost() const { return padLost_; }
  /// While paused: with all gamepads back the match counts as whole again.
  void CheckReplugged();

 private:
  static constexpr int kPadsUnknown = -1;

  bool IsRunning() const { return currentSegment_ < static_cast<int>(segments_.size()); }
  void BeginSegment();
  void AddSegmentToBar(FieldBar& bar, std::size_t index);
  int InsertSegment(std::size_t index);
  int AppendSegment();
  void RemoveSegment(std::size_t index);
  void RemovePiece();
  void RestartEpisode();
  void WatchPads();

  std::vector<Segment> segments_;
  std::vector<std::uint32_t> pieceIds_;  // objects of the piece that was brought last
  int currentSegment_ = 0;
  float elapsed_ = 0.0f;        // game seconds in the running segment
  float episodeLength_ = 0.0f;  // game seconds
  bool active_ = true;
  int padCount_ = kPadsUnknown;  // gamepads at the first update
  bool padLost_ = false;
};

/// The episode of the match controller, or null while no match runs.
SegmentManager* FindSegmentManager();
