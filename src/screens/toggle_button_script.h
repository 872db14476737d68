// Shows one of two pictures, as a flag stands.
#pragma once

#include <string>

#include "core/script.h"

class ToggleButtonScript final : public Script {
 public:
  /// Sets the picture of the owner's sprite; without a flag or a sprite nothing.
  void Update(float step) override;
  const char* GetName() const override { return "ToggleButton"; }

  std::string offImage;  ///< file names in Texture/
  std::string onImage;
  const bool* flag = nullptr;  ///< not owned
};
