#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "core/scripted_platform.h"
#include "editor/editor.h"
#include "test_world.h"
#include "tools/record/kept_matches.h"
#include "tools/record/live_platform.h"
#include "tools/record/recorder.h"
#include "tools/simulate/input_script.h"

namespace {

namespace fs = std::filesystem;

std::string ReadAll(const fs::path& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

// What a game hears in each frame, and what it reads of the pads.
struct Hearing final : EventRouter {
  std::vector<std::string> heard;

  void BeginFrame() override {
    const Platform& platform = GetPlatform();
    std::ostringstream pads;
    pads << "devices " << platform.GetJoystickCount() << " width " << platform.GetWindowRect().width;
    for (int slot = 0; slot < kGamepadSlots; ++slot)
      pads << (platform.IsGamepadConnected(slot) ? " pad " : " none ") << platform.GetGamepadAxis(slot, 0) << ' '
           << platform.GetGamepadAxis(slot, 5) << ' ' << platform.GetGamepadButton(slot, 3);
    heard.push_back(pads.str());
  }
  void Route(const SDL_Event& event) override {
    std::ostringstream text;
    text << "event " << event.type << ' ' << event.key.keysym.sym << ' ' << int{event.key.repeat} << ' '
         << event.motion.x << ' ' << event.motion.y;
    heard.push_back(text.str());
  }
  void EndFrame() override {}
};

}  // namespace

// A window whose events, pads, size and mouse are recorded, and a script that plays the file: the game cannot tell.
TEST(Record, WhatIsPlayedAgainIsWhatWasGiven) {
  TestWorld world;
  GetEditor().Init();
  const fs::path file = fs::current_path() / "play.input";
  constexpr int kFrames = 6;
  Hearing live;
  {
    ScriptedPlatform window;
    ScriptedPlatform given;
    Recorder recorder;
    ASSERT_EQ(recorder.Open(file), "");
    EXPECT_NE(Recorder().Open(file), "") << "what is there is not written over";
    LivePlatform platform(window, given, recorder);
    SetPlatform(platform);
    for (int frame = 0; frame < kFrames; ++frame) {
      if (frame == 1) window.ConnectPad(2, true);
      if (frame == 2) window.SetPadAxis(2, 0, -1234), window.SetPadButton(2, 3, true), window.PushKey('d', true);
      if (frame == 3)
        window.PushKey('d', true), window.PushMouse(5, 6), window.PushMouse(7, 8), window.PushClick(3, true);
      if (frame == 4) window.ConnectPad(2, false), window.ConnectPad(0, true), window.ResizeWindow(640, 480);
      if (frame == 5) window.PushKey('d', false), window.PushFocus(false), window.SetOtherDevices(2);
      platform.PumpEvents(live);
    }
    recorder.Finish(kFrames);
  }
  InputScript script;
  std::string error;
  ASSERT_TRUE(script.Parse(ReadAll(file), error)) << error;
  EXPECT_TRUE(script.IsRecording() && script.HasEnd());
  EXPECT_EQ(script.CountFrames(), kFrames);
  Hearing again;
  ScriptedPlatform played;
  SetPlatform(played);
  for (int frame = 0; frame < kFrames; ++frame) {
    EXPECT_TRUE(script.Apply(frame, played, error)) << error;
    played.PumpEvents(again);
  }
  static ScriptedPlatform nothing;
  SetPlatform(nothing);
  EXPECT_EQ(again.heard, live.heard);
  EXPECT_GT(live.heard.size(), std::size_t{kFrames} + 6);
}

// The newest file names a crash once; more than were asked for go, the oldest first.
TEST(Record, KeepsTheLastMatches) {
  TestWorld world;
  const KeptMatches kept(3);
  const fs::path folder = fs::path(kept.NextName()).parent_path();
  EXPECT_EQ(folder, fs::current_path() / "matches");
  EXPECT_EQ(kept.FindInterrupted(), "");
  for (const char* name : {"2020-1", "2020-2", "2020-3", "2020-4"})
    std::ofstream(folder / (std::string(name) + ".input")) << "start boot\n7 end\n";
  EXPECT_EQ(kept.FindInterrupted(), "");
  {
    Recorder cut;
    ASSERT_EQ(cut.Open(folder / "2020-5.input"), "");
    EXPECT_EQ(kept.FindInterrupted(), "") << "it is still being written";
  }
  EXPECT_EQ(kept.FindInterrupted(), folder / "2020-5.input");
  kept.RemoveOldest();
  EXPECT_FALSE(fs::exists(folder / "2020-2.input"));
  EXPECT_TRUE(fs::exists(folder / "2020-3.input") && fs::exists(folder / "2020-5.input"));
  fs::remove_all(folder);
  std::ofstream(folder.string()) << "no folder";
  EXPECT_EQ(kept.NextName(), "");
}
