// What the loaded banks offer: events by path, with their sounds.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "audio/studio/bank_file.h"
#include "audio/studio/sound_reader.h"

namespace Studio {

struct Event {
  BankEvent source;                        ///< never changes
  Result failure = Result::kOk;            ///< why it cannot be played; it is not tried again
  bool loaded = false;                     ///< the samples are there, or the piece of music was found good
  Samples samples;                         ///< of effects
  std::optional<std::uint64_t> lastStart;  ///< the system's update after which it was

  bool IsMusic() const { return source.category == Category::kMusic; }
};

class Catalogue {
 public:
  /// Takes the bank in; nothing of it when one of its events is known already.
  Result Add(BankContent content);
  std::size_t GetBankCount() const { return banks_.size(); }

  /// The index of the event that a strings bank gives this path; none when either bank lacks it.
  std::optional<std::size_t> FindEvent(std::string_view path) const;
  std::size_t GetEventCount() const { return events_.size(); }
  Event& GetEvent(std::size_t index) { return *events_[index]; }

  /// Keeps an effect's samples, unless all effects together would be longer than kMaxSeconds; a second time without
  /// effect.
  Result Keep(Event& event, Samples samples);

 private:
  std::vector<std::unique_ptr<BankContent>> banks_;
  std::vector<std::unique_ptr<Event>> events_;
  std::map<std::uint64_t, std::size_t> eventsByNumber_;
  std::map<std::string, std::uint64_t, std::less<>> numbersByPath_;
  std::size_t keptFrames_ = 0;
};

}  // namespace Studio
