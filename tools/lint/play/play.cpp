#include "tools/lint/play/play.h"

#include <filesystem>
#include <system_error>

#include "audio/audio.h"
#include "core/data_place.h"
#include "core/print.h"
#include "lint/lint.h"
#include "tools/lint/play/play_report.h"
#include "tools/simulate/data_folder.h"

namespace fs = std::filesystem;

namespace {

constexpr int kRuns = 8;            // by bots
constexpr int kProbes = 4;          // by players who try to get away
constexpr char kNeeded[] = "core";  // a game's folder holds it

std::vector<PlayPlan> AllPlans() {
  std::vector<PlayPlan> plans;
  for (int number = 0; number < kProbes; ++number) plans.push_back({true, number});
  for (int number = 0; number < kRuns; ++number) plans.push_back({false, number});
  return plans;
}

// The program's own, where what is saved would go.
std::string OwnData() {
  std::error_code error;
  const fs::path home = fs::current_path(error);
  std::string folder = EnterOwnData().empty() ? fs::current_path(error).string() : std::string{};
  fs::current_path(home, error);
  return folder;
}

// The folder that the file is a piece of. What an installed game's lacks may stand in another until it is entered.
std::string DataOf(const std::string& file, const std::string& dataFolder) {
  LocateOwnData();
  if (!dataFolder.empty()) return dataFolder;
  std::error_code error;
  std::string folder = GameFolderOf(fs::absolute(file, error).string());
  return fs::exists(fs::path(folder) / kNeeded, error) ? folder : OwnData();
}

bool Play(const std::string& file, const std::string& data, LintReport& report, std::FILE* out) {
  std::error_code error;
  PlayStage stage;
  const std::string path = fs::absolute(file, error).string();
  if (const std::string fault = stage.Read(path, data); !fault.empty()) {
    report.Say(1, "not-played", fault);
    return false;
  }
  const fs::path home = fs::current_path(error);
  PlayReport lines(stage, report, file, data, out);
  std::vector<PlayResult> results;
  const std::string fault = stage.Enter();
  if (fault.empty()) results = PlayAll(stage, AllPlans());
  fs::current_path(home, error);
  LeaveOverlay();
  if (!fault.empty()) {
    report.Say(1, "not-played", fault);
    return false;
  }
  return !lines.Tell(results);
}

}  // namespace

int PlayFiles(const std::vector<std::string>& files, const std::string& dataFolder, std::FILE* out) {
  Audio::SilenceLibraries();
  bool good = true;
  for (const std::string& file : files) {
    const std::string data = DataOf(file, dataFolder);
    good = LintFiles({file}, data, out) == 0 && good;
    LintReport report(file, out);
    good = Play(file, data, report, out) && good;
    std::fflush(out);
  }
  return good ? 0 : 1;
}
