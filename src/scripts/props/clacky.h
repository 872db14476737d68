// Does nothing. Levels may name it.
#pragma once

#include "core/script.h"

class Clacky final : public Script {
 public:
  const char* GetName() const override { return "Clacky"; }
};
