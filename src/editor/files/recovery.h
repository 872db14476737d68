// Copies of unsaved work beside the autosaves: one every two minutes of changes, the last ten. A run that ends as it
// should leaves a sign that it did; without it the next run offers the last copy.
#pragma once

#include <functional>
#include <string>

class Recovery {
 public:
  static constexpr int kPeriod = 2 * 60 * 60;  ///< frames with unsaved changes between two copies
  static constexpr int kKept = 10;

  /// Looks for what a run has left that broke off, and writes copies from now on.
  void Start();
  /// Once a frame; `sceneText` is asked for the text to keep when a copy is due.
  void Update(bool unsaved, const std::function<std::string()>& sceneText);
  /// A copy now, since the run may be about to end.
  void PutAside(const std::function<std::string()>& sceneText);
  /// The copy that a run has left that broke off; empty for none.
  const std::string& GetOffer() const { return offer_; }
  void Dismiss() { offer_.clear(); }
  /// The run ends as it should.
  void End();

 private:
  void Write(const std::string& text);

  bool started_ = false;
  bool marked_ = false;  // that there are copies of a run which has not ended yet
  int frames_ = 0;
  std::string offer_;
};
