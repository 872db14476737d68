#include "tools/film/moments.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

namespace {

// How an event begins, and after how many frames it is best seen: titles and pieces come into the picture by and by.
struct Kind {
  std::string_view words;
  int delay;
};
constexpr Kind kKinds[] = {
    {"screen podium", 0},  // where a run to the end ends
    {"screen ", 90},      {"segment begin ", 150}, {"objective begin ", 60}, {"stun ", 10}, {"menu open ", 5},
};

const Kind* FindKind(std::string_view text) {
  for (const Kind& kind : kKinds)
    if (text.substr(0, kind.words.size()) == kind.words) return &kind;
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
  if (const Kind* kind = FindKind(text)) waiting_.push_back({frame_ + kind->delay, FileName(frame_, text)});
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
