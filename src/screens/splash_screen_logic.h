// The notice that this is a game for controllers.
#pragma once

#include "core/script.h"

class SplashScreenLogic final : public Script {
 public:
  void Update(float step) override;
  const char* GetName() const override { return "SplashScreenLogic"; }
  /// Brings the title.
  ~SplashScreenLogic() override;
};

void CreateSplashScreen();
