#include "tools/film/moments.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

#include "graphics/renderer.h"

namespace {

// How an event begins, and after how many frames it is best seen: titles and pieces come into the picture by and by.
struct Sight {
  std::string_view words;
  int delay;
};
constexpr Sight kSights[] = {
    {"screen podium", 0},  // where a run to the end ends
    {"screen ", 90},      {"segment begin ", 150}, {"objective begin ", 60}, {"stun ", 10}, {"menu open ", 2},
};

const Sight* FindSight(std::string_view text) {
  for (const Sight& sight : kSights)
    if (text.substr(0, sight.words.size()) == sight.words) return &sight;
  return nullptr;
}

std::string FileName(int frame, std::string_view text) {
  char number[16];
  std::snprintf(number, sizeof number, "%06d-", frame);
  std::string name = number;
  for (const char c : text) name += std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' ? c : '-';
  return name;
}

}  // namespace

void Moments::OnEvent(std::string_view text) {
  // A picture of a menu that has gone would show the stage.
  if (text.starts_with("menu close "))
    std::erase_if(waiting_, [](const Moment& moment) { return moment.name.find("-menu-") != std::string::npos; });
  const Sight* sight = FindSight(text);
  if (sight == nullptr) return;
  waiting_.push_back({frame_ + sight->delay, FileName(frame_, text)});
  if (sight->delay == 0) GetRenderer().SetDrawing(true);
}

bool Moments::IsDue() const {
  return std::any_of(waiting_.begin(), waiting_.end(), [&](const Moment& moment) { return moment.frame <= frame_; });
}

std::vector<std::string> Moments::TakeDue() {
  std::vector<std::string> names;
  std::erase_if(waiting_, [&](const Moment& moment) {
    if (moment.frame > frame_) return false;
    names.push_back(moment.name);
    return true;
  });
  return names;
}
