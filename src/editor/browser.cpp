#include "editor/browser.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <system_error>

#include "core/data_place.h"
#include "core/file_name.h"
#include "editor/files/level_files.h"
#include "graphics/renderer.h"
#include "lint/key_table.h"
#include "lint/level_file.h"

namespace {

namespace fs = std::filesystem;

constexpr char kPictureFolder[] = "Texture";
constexpr std::uintmax_t kLargestArchetype = 256 * 1024;  // bytes; what is larger is a level
constexpr std::size_t kMostFiles = 2000;                  // of a folder that are looked at

constexpr std::array<std::pair<Browser::Page, const char*>, 4> kPages = {{{Browser::Page::kPictures, "Pictures"},
                                                                          {Browser::Page::kScripts, "Scripts"},
                                                                          {Browser::Page::kComponents, "Components"},
                                                                          {Browser::Page::kArchetypes, "Archetypes"}}};

std::string Lowered(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

// Plain names of the folder's regular files, sorted.
std::vector<std::string> FilesIn(const char* folder) {
  std::vector<std::string> names;
  std::error_code error;
  for (const std::string& place : FindDataFolders(folder))
    for (fs::directory_iterator entry(place, error), end; !error && entry != end && names.size() < kMostFiles;
         entry.increment(error)) {
      std::error_code fault;
      const std::string name = entry->path().filename().string();
      if (entry->is_regular_file(fault) && IsPlainName(name)) names.push_back(name);
    }
  std::sort(names.begin(), names.end());
  names.erase(std::unique(names.begin(), names.end()), names.end());
  return names;
}

// What an object alone does, by its scripts.
std::string MeaningOf(const LintObject& object) {
  std::string meaning;
  for (const LintBlock& script : object.scripts) {
    const BlockSchema* schema = FindScriptSchema(script.name);
    if (schema == nullptr) continue;
    if (!meaning.empty()) meaning += ' ';
    meaning += schema->meaning;
  }
  return meaning.empty() ? "Does nothing by itself." : meaning;
}

}  // namespace

void Browser::Reset() {
  shown_ = false;
  page_ = Page::kPictures;
  target_.clear();
  filter_.clear();
  sheet_ = 0;
  choices_.clear();
  tried_.clear();
}

void Browser::Toggle() {
  shown_ = !shown_;
  target_.clear();
  if (shown_) Read();
}

void Browser::Open(Page page, const std::string& target) {
  shown_ = true;
  page_ = page;
  target_ = target;
  filter_.clear();
  Read();
}

void Browser::Read() {
  choices_.clear();
  tried_.clear();
  sheet_ = 0;
  const auto add = [this](const BlockSchema& schema) {
    choices_.push_back({std::string(schema.name), std::string(schema.meaning)});
  };
  switch (page_) {
    case Page::kPictures:
      for (const std::string& name : FilesIn(kPictureFolder)) choices_.push_back({name, {}});
      break;
    case Page::kScripts:
      for (const BlockSchema& schema : ScriptSchemas()) add(schema);
      break;
    case Page::kComponents:
      for (const BlockSchema& schema : ComponentSchemas())
        if (schema.name != "Transform") add(schema);
      break;
    case Page::kArchetypes:
      ReadArchetypes();
      break;
  }
}

// A file of one object, beside the copy of the generator host, is an archetype.
void Browser::ReadArchetypes() {
  for (const std::string& name : FilesIn(".")) {
    std::error_code error;
    const auto size = fs::file_size(FindData(name), error);
    if (error || size == 0 || size > kLargestArchetype || fs::path(name).has_extension()) continue;
    LintLevel level(name);
    LintReport quiet(name, nullptr);
    if (!ReadLevel(level, quiet) || quiet.IsUnreadable()) continue;
    const LintObject* first = level.GetFirst();
    const auto count = std::count_if(level.objects.begin(), level.objects.end(),
                                     [](const LintObject& object) { return !object.IsHost(); });
    if (first == nullptr || count != 1) continue;
    const LintLine* picture = ValueOf(first->Find("Sprite"), "texture path");
    choices_.push_back({name, MeaningOf(*first), picture == nullptr ? std::string{} : std::string(picture->value)});
  }
}

void Browser::FillPages() {
  for (const auto& [page, label] : kPages) {
    bar_.AddButton(label, [this, to = page] { Open(to, to == page_ ? target_ : std::string{}); });
    bar_.GetLast().marked = page == page_;
  }
  Field filter{"Look for", &filter_};
  filter.whileTyping = true;
  bar_.Add(filter);
  bar_.GetLast().hint = "Part of a name, in any case";
  if (!target_.empty()) bar_.AddText("for " + target_);
}

void Browser::Fill(const Chooser& choose) {
  bar_.RemoveAll();
  if (!shown_) return;
  FillPages();
  std::vector<const Choice*> found;
  for (const Choice& choice : choices_)
    if (Lowered(choice.name + ' ' + choice.meaning).find(Lowered(filter_)) != std::string::npos)
      found.push_back(&choice);
  if (page_ == Page::kPictures) return FillPictures(found, choose);
  for (const Choice* choice : found) FillRow(*choice, choose);
}

void Browser::FillRow(const Choice& choice, const Chooser& choose) {
  bar_.AddButton(choice.name, choice.name + ": " + choice.meaning,
                 [choose, page = page_, name = choice.name] { choose(page, name); });
  if (!choice.picture.empty()) LoadOnce(choice.picture);
  TweakBar::Entry& row = bar_.GetLast();
  row.row = true;
  row.indented = page_ == Page::kArchetypes;
  row.picture = choice.picture;
  row.hint = choice.meaning;
}

void Browser::LoadOnce(const std::string& picture) {
  Renderer& renderer = GetRenderer();
  if (renderer.IsDrawing() && tried_.insert(picture).second && renderer.GetTexture(picture) == 0)
    renderer.LoadTexture(picture);
}

// One that was drawn in the meantime, or anew, is loaded by opening the page again.
bool Browser::CanBeSeen(const std::string& picture) {
  if (!Lowered(picture).ends_with(".png")) return false;
  LoadOnce(picture);
  return !GetRenderer().IsDrawing() || GetRenderer().GetTexture(picture) != 0;
}

void Browser::FillPictures(const std::vector<const Choice*>& found, const Chooser& choose) {
  const std::size_t sheets = std::max<std::size_t>(1, (found.size() + kPerSheet - 1) / kPerSheet);
  sheet_ = std::min(sheet_, sheets - 1);
  if (sheets > 1) {
    bar_.AddButton("Back", [this] { sheet_ -= sheet_ > 0 ? 1 : 0; });
    bar_.AddButton("Forth", [this] { ++sheet_; });
    bar_.AddText("sheet " + std::to_string(sheet_ + 1) + " of " + std::to_string(sheets));
  }
  bar_.AddText("A PNG of your own goes into " + SaveFolder() + "/" + kPictureFolder);
  const std::size_t end = std::min(found.size(), (sheet_ + 1) * kPerSheet);
  std::vector<std::string> unseen;
  for (std::size_t i = sheet_ * kPerSheet; i < end; ++i) {
    const std::string& name = found[i]->name;
    if (!CanBeSeen(name)) {
      unseen.push_back(name);
      continue;
    }
    bar_.AddButton(name, [choose, name] { choose(Page::kPictures, name); });
    bar_.GetLast().picture = name;
    bar_.GetLast().hint = name;
  }
  for (const std::string& name : unseen) bar_.AddText(faults_.FaultOf(name));
}

void OfferPages(TweakBar& bar, const std::string& root, Browser& browser) {
  constexpr std::pair<std::string_view, Browser::Page> kFields[] = {{"Sprite Name", Browser::Page::kPictures},
                                                                    {"TextureName", Browser::Page::kPictures},
                                                                    {"Script Name", Browser::Page::kScripts},
                                                                    {"ArchType Name", Browser::Page::kArchetypes},
                                                                    {"ArchetypeName", Browser::Page::kArchetypes}};
  for (std::size_t i = 0; i < bar.GetEntries().size(); ++i) {
    TweakBar::Entry& entry = bar.GetEntry(i);
    for (const auto& [name, page] : kFields)
      if (entry.kind == TweakBar::Entry::Kind::kVariable && entry.name == name)
        entry.press = [&browser, to = page, target = root + entry.path] { browser.Open(to, target); };
  }
}
