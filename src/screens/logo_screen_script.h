// The makers' logo: shows itself at once and loads everything else behind it, pictures one a frame and the sounds
// beside the frames.
#pragma once

#include "core/script.h"
#include "core/side_work.h"

class LogoScreenScript final : public Script {
 public:
  /// Loads what the screens show, begins to load the effects and starts the title's music.
  void Initialize() override;
  void Update(float step) override;
  const char* GetName() const override { return "LogoScreenScript"; }
  /// Finishes loading if need be and brings the notice, or the title when the player asked for it.
  ~LogoScreenScript() override;

  /// Returns when the sounds are registered.
  void FinishEffects() { effects_.Finish(); }

 private:
  void Load(float step);
  void FinishLoading();

  SideWork effects_;  // loads them
};

/// The first screen, with a spinner and a label; it loads everything and plays the title's music. Once, at the start.
void CreateLogoScreen();
/// Before the program ends: waits for the effects, and no screen brings another one any more.
void AbandonStartUp();
