// Slows the whole game down and back up: the frame step decays over a ramp, stands at 0, and rises again. While it runs
// no body is damped. Main thread only.
#pragma once

/// Starts the effect anew. All durations count in seconds of real time at 60 frames per second (0.017 a frame).
void StartSlowMotion(float hold, float rampIn, float rampOut);

/// Ends the effect at once: the normal frame step and every body's own damping come back.
void StopSlowMotion();

/// One frame of the effect, in running and paused frames alike; nothing when none runs.
void UpdateSlowMotion();
