// The level as it stands, played by bots beside the game.
#include <algorithm>
#include <cstdio>

#include "core/file_name.h"
#include "core/object_manager.h"
#include "core/print.h"
#include "editor/acts/copies.h"
#include "editor/editor.h"

namespace {

// With a last object that tells the level's duration, as a save has it.
std::string TextWithDuration(float duration) {
  char digits[64];
  std::snprintf(digits, sizeof digits, "%f", static_cast<double>(duration));
  GameObject& last = *Objects().GetObject(Objects().CreateObject());
  last.name = digits;
  std::string text = SceneText();
  last.alive = false;
  return text;
}

}  // namespace

// Under its own name the match of the folder tells its rule and its place.
void Editor::PlayLevel() {
  if (played_.IsRunning()) {
    played_.Stop();
    Print("the bots play no further\n");
    return;
  }
  const std::string name = IsPlainName(fileName_) ? fileName_ : "level";
  const std::string fault = played_.Start(name, TextWithDuration(levelDuration_));
  if (!fault.empty())
    Print("%s, nothing is played\n", fault.c_str());
  else
    Print("bots play a copy of the level: what shows is listed here in some seconds\n");
}

// Faults first: there is not room for all.
void Editor::HearOfPlayed() {
  auto lines = played_.Poll();
  if (!lines) return;
  std::stable_partition(lines->begin(), lines->end(),
                        [](const std::string& line) { return line.find(": note: ") == std::string::npos; });
  ShowFaults(played_.GetFile(), *lines, {});
  const std::string folder = played_.GetFile().substr(0, played_.GetFile().rfind('/') + 1);
  for (FaultLine& line : faults_)
    if (const auto at = line.text.find(folder); at != std::string::npos) line.text.erase(at, folder.size());
  status_ = {faults_.empty() ? "the bots have played the level: nothing is wrong with it"
                             : "the bots have played the level, see below"};
  played_.Stop();
}
