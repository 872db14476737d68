// What breaks instead of vanishing when its time is over.
#pragma once

class GameObject;

class Breakable {
 public:
  /// Again has no effect.
  virtual void Break() = 0;

 protected:
  ~Breakable() = default;
};

/// What of the object breaks, or null.
Breakable* FindBreakable(const GameObject& object);
