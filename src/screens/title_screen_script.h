// The title: waits until somebody lets go of everything and presses again, and then starts the first match.
#pragma once

#include "core/script.h"

class TitleScreenScript final : public Script {
 public:
  void Initialize() override;
  void Update(float step) override;
  const char* GetName() const override { return "TitleScreenScript"; }
  /// Starts the match.
  ~TitleScreenScript() override;

 private:
  int joystickCount_ = 0;
};

void CreateTitleScreen();
