#include "audio/studio/catalogue.h"

#include <algorithm>

#include "audio/studio/output.h"

namespace Studio {

namespace {
constexpr std::size_t kMostFrames = static_cast<std::size_t>(kMaxSeconds) * kOutputRate;
}

Result Catalogue::Add(BankContent content) {
  const bool known = std::any_of(content.events.begin(), content.events.end(),
                                 [&](const BankEvent& event) { return eventsByNumber_.contains(event.number); });
  if (known) return Result::kBankLoaded;
  banks_.push_back(std::make_unique<BankContent>(std::move(content)));
  for (const BankEvent& event : banks_.back()->events) {
    eventsByNumber_[event.number] = events_.size();
    events_.push_back(std::make_unique<Event>());
    events_.back()->source = event;
  }
  for (const BankPath& path : banks_.back()->paths) numbersByPath_[path.path] = path.number;
  return Result::kOk;
}

std::optional<std::size_t> Catalogue::FindEvent(std::string_view path) const {
  const auto number = numbersByPath_.find(path);
  if (number == numbersByPath_.end()) return std::nullopt;
  const auto event = eventsByNumber_.find(number->second);
  if (event == eventsByNumber_.end()) return std::nullopt;
  return event->second;
}

Result Catalogue::Keep(Event& event, Samples samples) {
  if (event.loaded) return Result::kOk;
  if (keptFrames_ + samples.GetFrames() > kMostFrames) return Result::kSoundTooLong;
  keptFrames_ += samples.GetFrames();
  event.samples = std::move(samples);
  event.loaded = true;
  return Result::kOk;
}

}  // namespace Studio
