// A named message to the scripts of one object, delivered before the send returns. There is no queue and no broadcast.
#pragma once

#include <string_view>

struct Event {
  /// `payload` is the sender's; its type is told by the name and may be null. Receivers copy what they keep. An empty
  /// name becomes "DefaultName".
  explicit Event(std::string_view eventName, const void* payload = nullptr)
      : name(eventName.empty() ? "DefaultName" : eventName), data(payload) {}

  std::string_view name;  ///< what happened; compared exactly
  const void* data;
};
