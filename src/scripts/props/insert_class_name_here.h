// The pattern that new scripts are written from. ScreenShake is registered under the same name after it, so files and
// AddScript never make it.
#pragma once

#include "core/field_bar.h"
#include "core/script.h"

class InsertClassNameHere final : public Script {
 public:
  void Update(float /*step*/) override { started_ = true; }
  void AddToTweakBar(FieldBar& bar) override { bar.AddEmptyGroup(GetName()); }
  const char* GetName() const override { return "InsertName"; }

 private:
  bool started_ = false;
};
