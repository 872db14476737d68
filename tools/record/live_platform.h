// The real window and its devices, put into the words of an input file before the game hears of them. So what is played
// and what is recorded are the same by the way they come.
#pragma once

#include <vector>

#include "editor/bars/bar_actions.h"
#include "tools/record/recorder.h"
#include "tools/record/window_platform.h"

class LivePlatform final : public WindowPlatform, private BarHand {
 public:
  /// Takes the place of whoever acts on the editor's bars, until it goes. All must outlive it.
  LivePlatform(Platform& window, ScriptedPlatform& given, Recorder& recorder);
  ~LivePlatform() override;

  void PumpEvents(EventRouter& router) override;
  void SetFullscreen(bool fullscreen) override { window_.SetFullscreen(fullscreen); }
  void SetClipboard(const std::string& text) override;
  void Minimise() override { window_.Minimise(); }

 private:
  // Hears the window's events.
  class Ear;

  void Press(const std::string& path) override;
  void Set(const std::string& path, const std::string& value, bool done) override;
  void Hear(const SDL_Event& event);
  void HearWindow(const SDL_WindowEvent& event);
  void ReadClipboard(std::vector<InputEvent>& into);
  void MoveMouse(int x, int y);
  void ReadPads();
  void ReadPad(int slot);
  void Give(const InputEvent& event);

  Recorder& recorder_;
  int frame_ = 0;
  std::vector<InputEvent> bars_;    // done on the bars in the frame before
  std::vector<InputEvent> events_;  // of this frame
  Given::Mouse mouse_ = {0, 0};
  int otherDevices_ = 0;
};
