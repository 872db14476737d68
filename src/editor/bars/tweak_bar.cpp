#include "editor/bars/tweak_bar.h"

#include <utility>

namespace {

std::string_view Trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  return first == std::string_view::npos ? std::string_view{}
                                         : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace

TweakBar::Entry& TweakBar::Append(Entry::Kind kind, std::string_view name, std::string_view label) {
  Entry& entry = entries_.emplace_back(Entry{kind, std::string(name)});
  entry.label = label;
  entry.inside = inside_;
  entry.path = inside_ + entry.name;
  if (const int count = ++used_[entry.path]; count > 1) entry.path.append("#").append(std::to_string(count));
  return entry;
}

void TweakBar::BeginGroup(std::string_view name) {
  Append(Entry::Kind::kGroup, name, name);
  groupStarts_.push_back(inside_.size());
  inside_ += name;
  inside_ += '/';
}

void TweakBar::EndGroup() {
  inside_.resize(groupStarts_.back());
  groupStarts_.pop_back();
  entries_.push_back({Entry::Kind::kEndGroup, {}});
}

void TweakBar::EndGroupUnlessEmpty() {
  const bool empty = entries_.back().kind == Entry::Kind::kGroup;
  EndGroup();
  if (empty) entries_.erase(entries_.end() - 2, entries_.end());
}

void TweakBar::Add(Field field) {
  const std::string label = field.label;
  Append(Entry::Kind::kVariable, label, label).field = std::move(field);
}

void TweakBar::AddButton(std::string_view name, std::string_view label, std::function<void()> press) {
  Append(Entry::Kind::kButton, name, label).press = std::move(press);
}

void TweakBar::AddInsertButton(std::string_view name, std::string_view label, Insertion insertion) {
  Entry& entry = Append(Entry::Kind::kButton, name, label);
  entry.press = [insert = insertion.insert] { insert(Insertion::kNowhere); };
  entry.insertion = std::move(insertion);
}

void TweakBar::AddText(std::string_view line) { entries_.push_back({Entry::Kind::kText, std::string(line)}); }

FieldTarget TweakBar::KeepValue(const FieldValue& value) {
  return std::visit([](auto& kept) { return FieldTarget(&kept); }, keptValues_.emplace_back(value));
}

void TweakBar::RemoveAll() {
  entries_.clear();
  groupStarts_.clear();
  inside_.assign(1, '/');
  used_.clear();
  keptFloats_.clear();
  keptInts_.clear();
  keptValues_.clear();
}

const TweakBar::Entry* TweakBar::Find(std::string_view label) const {
  const std::string_view wanted = Trimmed(label);
  for (const Entry& entry : entries_)
    if (Matches(entry, wanted)) return &entry;
  return nullptr;
}

// A group's name may hold a slash itself, so the path is looked through for the groups, not cut into them.
bool TweakBar::Matches(const Entry& entry, std::string_view label) const {
  if (entry.kind != Entry::Kind::kVariable && entry.kind != Entry::Kind::kButton) return false;
  if (Trimmed(entry.name) == label || Trimmed(entry.label) == label) return true;
  const auto slash = label.rfind('/');
  if (slash == std::string_view::npos) return false;
  const std::string_view last = label.substr(slash + 1);
  if (Trimmed(entry.name) != last && Trimmed(entry.label) != last) return false;
  std::string_view groups = label.substr(0, slash);
  const std::string inside = '/' + name_ + entry.inside;
  std::size_t from = 0;
  while (!groups.empty()) {
    const auto end = groups.find('/');
    std::string group(1, '/');
    group += groups.substr(0, end);
    group += '/';
    const auto found = inside.find(group, from);
    if (found == std::string::npos) return false;
    from = found + 1;
    groups = end == std::string_view::npos ? std::string_view{} : groups.substr(end + 1);
  }
  return true;
}
