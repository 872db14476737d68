#include "editor/files/picture_faults.h"

#include <system_error>
#include <variant>

#include "core/data_place.h"
#include "graphics/picture_fault.h"
#include "graphics/renderer.h"

namespace {

namespace fs = std::filesystem;

constexpr char kFolder[] = "Texture";
constexpr char kNone[] = "NULLSTRING";  // what a file says in place of no name

}  // namespace

std::string PictureFaults::FaultOf(const std::string& name) {
  if (GetRenderer().GetTexture(name) != 0) return {};
  if (name.empty() || name == kNone) return "no picture is named: black";
  const auto [found, isNew] = known_.try_emplace(name);
  Known& known = found->second;
  if (isNew || frame_ - known.looked >= kPeriod) {
    known.looked = frame_;
    std::error_code error;
    const auto time = fs::last_write_time(FindData(std::string(kFolder) + "/" + name), error);
    if (isNew || error || time != known.time) known.fault = PictureFault(kFolder, name);
    known.time = time;
  }
  if (!known.fault.empty()) return name + " " + known.fault;
  return name + " is there, but not loaded: choose it by ... beside the field, or press Load Texture";
}

void PictureFaults::Tell(TweakBar& bar) {
  for (std::size_t i = 0; i < bar.GetEntries().size(); ++i) {
    TweakBar::Entry& entry = bar.GetEntry(i);
    const auto* name = std::get_if<std::string*>(&entry.field.target);
    const bool isPicture = entry.name == "Sprite Name" || entry.name == "TextureName";
    if (entry.kind == TweakBar::Entry::Kind::kVariable && isPicture && name != nullptr && !entry.mixed)
      entry.fault = FaultOf(**name);
  }
}
