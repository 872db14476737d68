// Shows bars over the running game and takes the events that are meant for them. Widgets, text editing and drawing are
// Dear ImGui's, which nothing outside this page reaches. Works without a GL context too: then nothing is seen, and the
// events do the same. While the bars are hidden no frame runs and no event is taken. Main thread only.
#pragma once

#include <SDL.h>

#include <bitset>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "editor/bars/bar_actions.h"
#include "editor/bars/bar_window.h"

class BarView {
 public:
  BarView() = default;
  BarView(const BarView&) = delete;
  BarView& operator=(const BarView&) = delete;
  ~BarView() { Shutdown(); }

  bool IsShown() const { return shown_; }
  /// Hiding drops what is being typed.
  void SetShown(bool shown);

  /// Takes an event if it is the bars': true, and nobody else may see it. What has gone down for the game also comes up
  /// for the game.
  bool HandleEvent(const SDL_Event& event);
  /// True while keys go into a text.
  bool IsTyping() const;

  /// One frame of the shown windows, each at its site, with the lines under them, in a window of that size.
  BarActions Run(std::span<const BarWindow> windows, std::span<const StageLine> lines, const BarLook& look, int width,
                 int height);
  /// Draws the last frame that was run over a picture of that size, as large as the whole window fits into it, in its
  /// middle. GL's state is afterwards as it was.
  void Draw(int width, int height);
  /// Frees everything, the GL objects too; the next showing starts anew.
  void Shutdown();

 private:
  static constexpr std::size_t kMouseButtons = 3;

  void Start();
  void FeedMouse();
  void FeedKeys();
  bool HandleMouseButton(const SDL_MouseButtonEvent& event);
  bool HandleKey(const SDL_KeyboardEvent& event);
  bool IsOverBar(int x, int y) const;

  bool shown_ = false;
  bool started_ = false;
  bool drawable_ = false;  // Run has made something since the bars were shown
  bool glReady_ = false;
  bool clickedBar_ = false;  // since the last Run: keys that follow belong to what was clicked
  std::bitset<kMouseButtons> held_;
  std::bitset<kMouseButtons> pressed_;    // since the last Run, so that a short click is seen
  std::bitset<kMouseButtons> takenHere_;  // went down on a bar
  std::vector<int> keysTaken_;            // held keys that went to the bars
  std::vector<int> keysReleased_;         // since the last Run
  std::map<std::string, BarPlace> places_;
};
