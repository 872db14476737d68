// The level as it stands, played by bots beside the game.
#include <algorithm>

#include "core/file_name.h"
#include "core/object_manager.h"
#include "core/print.h"
#include "editor/acts/copies.h"
#include "editor/editor.h"
#include "editor/files/level_files.h"

// Under its own name the match of the folder tells its rule and its place.
void Editor::PlayLevel() {
  if (played_.IsRunning()) {
    played_.Stop();
    Print("the bots play no further\n");
    return;
  }
  if (try_.trial.IsOn()) {
    Print("the level is being tried: the bots can play it when the try has ended\n");
    return;
  }
  const std::string text = TextWithDuration(levelDuration_);
  const std::string name = IsPlainName(fileName_) ? fileName_ : "level";
  const std::string fault = played_.Start(name, text);
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
