// The game's clocks. All game logic advances by frameStep per running frame, never by measured time; only slow motion
// changes frameStep. Main thread only.
//
// There are two kinds of seconds beside the real one. A game second is a second of elapsedTime: 118 frames, nearly two
// real seconds. A body second is one of what bodies integrate: 15 sub-steps of a third of frameStep, so five of them
// pass in a game second. A body that flies at 1 unit per body second moves 5 units in a game second, 2.55 in a real
// one.
#pragma once

/// Share of frameStep that one physics sub-step integrates.
inline constexpr float kPhysicsShare = 0.33333334f;
/// Physics sub-steps of a running frame.
inline constexpr int kSubSteps = 15;

struct GameTime {
  float frameStep = 0.0085f;          ///< seconds of game time a running frame adds
  float baseFrameStep = 0.0085f;      ///< what frameStep returns to when slow motion starts or ends
  float physicsStep = 1.0f / 360.0f;  ///< seconds one physics sub-step integrates; set anew each running frame
  float elapsedTime = 0.0f;           ///< seconds of game time so far; stands still while paused
};

/// The process-wide clock. A reset is an assignment of GameTime{}.
GameTime& Time();
