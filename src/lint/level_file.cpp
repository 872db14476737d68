#include "lint/level_file.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "core/data_place.h"
#include "core/file_cache.h"
#include "core/file_name.h"

namespace {

namespace fs = std::filesystem;
using Kind = LintLine::Kind;

bool ReadText(LintLevel& level, LintReport& report) {
  const std::string path = FindData(level.file);
  std::error_code error;
  const bool regular = fs::is_regular_file(path, error);
  const auto size = regular ? fs::file_size(path, error) : 0;
  if (!regular || error || size == 0) {
    report.Say(1, "unreadable", "no such file, or an empty one: name a level that is there");
    return false;
  }
  if (size > static_cast<std::uintmax_t>(kMaxFileBytes)) {
    report.Say(1, "too-large", "the game reads at most 16 MiB: split the file");
    return false;
  }
  std::ifstream stream(path, std::ios::binary);
  level.text.resize(static_cast<std::size_t>(size));
  if (stream.read(level.text.data(), static_cast<std::streamsize>(size))) return true;
  report.Say(1, "unreadable", "the file cannot be read: check who may read it");
  return false;
}

class ObjectReader {
 public:
  ObjectReader(LintLevel& level, LintReport& report) : level_(level), reader_(level.lines, report), report_(report) {}

  void Run() {
    while (!reader_.AtEnd()) {
      const LintLine& line = reader_.Take();
      if (line.kind == Kind::kClose) continue;  // the document's end
      if (line.kind == Kind::kBlockOpen)
        level_.objects.push_back(ReadObject(line));
      else
        report_.Say(line.number, "outside-object", "only objects (\"ID: {\") may stand here");
      if (line.kind == Kind::kComponentOpen) reader_.SkipBlock();
    }
    level_.types = reader_.GetTypes();
  }

 private:
  LintObject ReadObject(const LintLine& header) {
    LintObject object;
    object.line = header.number;
    object.id = header.key;
    if (const LintLine* name = reader_.Expect(Kind::kValue, "Name", "the value")) {
      object.hasName = true;
      object.name = name->value;
    }
    if (const LintLine* core = reader_.Expect(Kind::kValue, "Core", "the value")) {
      object.core = core->value == "true";
      if (!object.core && core->value != "false") report_.Say(core->number, "bad-value", "Core must be true or false");
    }
    while (!reader_.AtEnd() && reader_.Peek().kind != Kind::kClose) ReadComponent(object);
    if (!reader_.AtEnd()) reader_.Take();
    return object;
  }

  void ReadComponent(LintObject& object) {
    const LintLine& header = reader_.Take();
    if (header.kind != Kind::kComponentOpen) {
      report_.Say(header.number, "missing-or-shifted", "a component or the object's end must stand here");
      if (header.kind == Kind::kBlockOpen) reader_.SkipBlock();
      return;
    }
    const BlockSchema* schema = FindComponentSchema(header.key);
    if (schema == nullptr) {
      report_.Say(
          header.number, "unknown-component",
          "no component is called \"" + std::string(header.key) +
              "\": Transform, ScriptBox, RigidBody, Sprite, GivePoints, SphereCollider or BoxCollider is right");
      reader_.SkipBlock();
      return;
    }
    if (object.Find(header.key) != nullptr)
      report_.Say(header.number, "repeated-component", "the object has one already, which is lost: remove one");
    if (header.key == "ScriptBox") {
      object.components.push_back({.name = header.key, .line = header.number});
      ReadScripts(object);
    } else {
      object.components.push_back(reader_.ReadBlock(header, *schema));
    }
  }

  void ReadScripts(LintObject& object) {
    while (!reader_.AtEnd() && reader_.Peek().kind != Kind::kClose) {
      const LintLine& header = reader_.Take();
      if (header.kind == Kind::kValue) {
        report_.Say(header.number, "missing-or-shifted", "a script or the end of the ScriptBox must stand here");
        continue;
      }
      const BlockSchema* schema = header.kind == Kind::kComponentOpen ? FindScriptSchema(header.key) : nullptr;
      if (schema != nullptr) {
        object.scripts.push_back(reader_.ReadBlock(header, *schema));
        continue;
      }
      report_.Say(header.number, "unknown-script",
                  "no script is called \"" + std::string(header.key) +
                      "\": \"brinewhirl-tool scripts\" prints those there are");
      reader_.SkipBlock();
    }
    if (!reader_.AtEnd()) reader_.Take();
  }

  LintLevel& level_;
  BlockReader reader_;
  LintReport& report_;
};

}  // namespace

std::string LintLevel::GetName() const { return fs::path(file).filename().string(); }

const LintObject* LintLevel::GetFirst() const {
  const auto first = std::find_if(objects.begin(), objects.end(), [](const auto& object) { return !object.IsHost(); });
  return first == objects.end() ? nullptr : &*first;
}

bool ReadLevel(LintLevel& level, LintReport& report) {
  if (!ReadText(level, report)) return false;
  ReadLevelText(level, report);
  return true;
}

void ReadLevelText(LintLevel& level, LintReport& report) {
  level.lines = ScanLines(level.text, report);
  ObjectReader(level, report).Run();
}

std::string GameFolderOf(const std::string& file) {
  const auto folder = fs::path(file).parent_path();
  return (folder.filename() == "autosaves" || folder.filename() == "examples" ? folder.parent_path() : folder).string();
}

const LintLevel* LevelFolder::Find(std::string_view name) {
  if (!IsLevelName(name)) return nullptr;
  auto found = levels_.find(name);
  if (found == levels_.end()) {
    auto level = std::make_unique<LintLevel>(PathOf(name));
    LintReport quiet(level->file, nullptr);
    ReadLevel(*level, quiet);
    found = levels_.emplace(std::string(name), std::move(level)).first;
  }
  return found->second->GetFirst() == nullptr ? nullptr : found->second.get();
}

std::string LevelFolder::PathOf(std::string_view name) const { return (fs::path(folder_) / name).string(); }
