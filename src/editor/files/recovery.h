// Copies of unsaved work beside the autosaves: one every two minutes of changes, the last ten. A run that ends as it
// should leaves a sign that it did; without it the next run offers the last copy.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

/// What of a scene a save or a copy holds: the state of the history, and the duration, which has none.
struct SceneVersion {
  std::uint64_t state = 0;
  float duration = 0.0f;  ///< game seconds
  bool operator==(const SceneVersion&) const = default;
};

class Recovery {
 public:
  using Clock = std::chrono::steady_clock;

  static constexpr std::chrono::minutes kPeriod{2};  ///< with unsaved changes between two copies, by the clock
  static constexpr int kKept = 10;

  /// Looks for what a run has left that broke off, and writes copies from now on.
  void Start();
  /// Once a frame, with what is unsaved, nothing for nothing; `sceneText` is asked for the text to keep when a copy of
  /// a version that none holds yet is due.
  void Update(const std::optional<SceneVersion>& unsaved, const std::function<std::string()>& sceneText,
              Clock::time_point now = Clock::now());
  /// A copy now, since the run may be about to end.
  void PutAside(const SceneVersion& version, const std::function<std::string()>& sceneText);
  /// The copy that a run has left that broke off; empty for none.
  const std::string& GetOffer() const { return offer_; }
  void Dismiss() { offer_.clear(); }
  /// The run ends as it should.
  void End();

 private:
  bool Write(const std::string& text);

  bool started_ = false;
  bool marked_ = false;                     // that there are copies of a run which has not ended yet
  std::optional<Clock::time_point> since_;  // when the changes began that no copy holds
  std::optional<SceneVersion> held_;        // by the last copy
  std::string offer_;
};
