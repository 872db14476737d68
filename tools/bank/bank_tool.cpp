#include "tools/bank/bank_tool.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>

#include "audio/studio/sound_reader.h"
#include "audio/studio/wav_writer.h"
#include "tools/bank/bank_spec.h"

namespace {

using Studio::Result;

constexpr std::string_view kEnding = ".bank";

int Fail(const std::string& name, const std::string& why) {
  std::fprintf(stderr, "%s: %s\n", name.c_str(), why.c_str());
  return 1;
}

bool ReadWhole(const std::string& path, std::string& bytes) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return false;
  std::ifstream file(path, std::ios::binary);
  std::ostringstream all;
  all << file.rdbuf();
  bytes = all.str();
  return file.good();
}

// The old file stays until the new one is whole.
bool WriteWhole(const std::string& path, const std::vector<std::uint8_t>& bytes) {
  const std::string unfinished = path + ".tmp";
  std::error_code error;
  {
    std::ofstream file(unfinished, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) return false;
  }
  std::filesystem::rename(unfinished, path, error);
  return !error;
}

std::string StringsName(const std::string& bank) {
  return bank.substr(0, bank.size() - kEnding.size()) + ".strings" + std::string(kEnding);
}

bool ReadSound(const std::string& path, Studio::BankSource& source, std::string& why) {
  std::string bytes;
  if (!ReadWhole(path, bytes)) {
    why = path + ": cannot be read";
    return false;
  }
  source.sound.assign(bytes.begin(), bytes.end());
  Studio::Samples samples;
  const Result result = Studio::DecodeAll(source.sound, samples);
  if (result != Result::kOk) why = path + ": " + Studio::ResultText(result);
  return result == Result::kOk;
}

bool Load(const std::string& file, Studio::BankContent& content) {
  std::vector<std::uint8_t> bytes;
  std::string why;
  if (Studio::ReadBankFile(file, bytes, why) == Result::kOk &&
      Studio::ParseBank(std::move(bytes), content, why) == Result::kOk)
    return true;
  Fail(file, why);
  return false;
}

const Studio::BankEvent* Find(const Studio::BankContent& bank, std::uint64_t number) {
  const auto event = std::find_if(bank.events.begin(), bank.events.end(),
                                  [number](const Studio::BankEvent& e) { return e.number == number; });
  return event == bank.events.end() ? nullptr : &*event;
}

bool HasPath(const Studio::BankContent& strings, std::uint64_t number) {
  return std::any_of(strings.paths.begin(), strings.paths.end(),
                     [number](const Studio::BankPath& path) { return path.number == number; });
}

// One line, on standard error when the bank does not have the sound.
bool ListEvent(const std::string& file, const std::string& path, const Studio::BankEvent* event, std::FILE* out) {
  if (event == nullptr) return Fail(file, path + ": the bank has no sound for it") == 0;
  Studio::Samples samples;
  const Result result = Studio::DecodeAll(event->sound, samples);
  if (result != Result::kOk) return Fail(file, path + ": " + Studio::ResultText(result)) == 0;
  std::fprintf(out, "%s %s %.3f s %d Hz %s %zu bytes\n", path.c_str(),
               event->category == Studio::Category::kMusic ? "music" : "sfx",
               static_cast<double>(samples.GetFrames()) / samples.rate, samples.rate,
               samples.channels == 1 ? "mono" : "stereo", event->sound.size());
  return true;
}

}  // namespace

int BuildBank(const std::string& spec, const std::string& out, const std::string& soundFolder) {
  if (!out.ends_with(kEnding)) return Fail(out, "the name of a bank ends in .bank");
  std::string text;
  if (!ReadWhole(spec, text)) return Fail(spec, "cannot be read");
  const std::filesystem::path folder =
      soundFolder.empty() ? std::filesystem::path(spec).parent_path() : std::filesystem::path(soundFolder);
  std::vector<std::string> faults;
  std::vector<Studio::BankSource> sources;
  for (const BankSpecLine& line : ParseBankSpec(text, faults)) {
    std::string why;
    Studio::BankSource source{line.path, line.category, {}};
    if (!ReadSound((folder / line.file).string(), source, why))
      faults.push_back(std::to_string(line.line) + ": " + why);
    sources.push_back(std::move(source));
  }
  for (const std::string& fault : faults) std::fprintf(stderr, "%s:%s\n", spec.c_str(), fault.c_str());
  if (!faults.empty()) return 1;
  for (const auto& [name, bytes] : {std::pair(out, Studio::WriteEventBank(sources)),
                                    std::pair(StringsName(out), Studio::WriteStringsBank(sources))})
    if (!WriteWhole(name, bytes)) return Fail(name, "cannot be written");
  return 0;
}

int ListBank(const std::string& file, std::FILE* out) {
  if (!file.ends_with(kEnding)) return Fail(file, "the name of a bank ends in .bank");
  Studio::BankContent bank;
  Studio::BankContent strings;
  if (!Load(file, bank) || !Load(StringsName(file), strings)) return 1;
  int result = 0;
  for (const Studio::BankPath& path : strings.paths)
    if (!ListEvent(file, path.path, Find(bank, path.number), out)) result = 1;
  for (std::size_t i = 0; i < bank.events.size(); ++i)
    if (!HasPath(strings, bank.events[i].number))
      result = Fail(file, "entry " + std::to_string(i + 1) + ": " + StringsName(file) + " has no path for it");
  return result;
}

int ExtractFromBank(const std::string& file, const std::string& event, const std::string& out) {
  Studio::BankContent bank;
  if (!Load(file, bank)) return 1;
  const Studio::BankEvent* found = Find(bank, Studio::EventNumber(event));
  if (found == nullptr) return Fail(file, event + ": no such event");
  Studio::Samples samples;
  const Result result = Studio::DecodeAll(found->sound, samples);
  if (result != Result::kOk) return Fail(file, event + ": " + Studio::ResultText(result));
  if (samples.channels == 1) {  // both sides are the same
    for (std::size_t i = 0; i < samples.GetFrames(); ++i) samples.stereo[i] = samples.stereo[Studio::kStereo * i];
    samples.stereo.resize(samples.GetFrames());
  }
  Studio::WavWriter wav;
  if (!wav.Open(out, samples.rate, samples.channels) || !wav.Write(std::span<const float>(samples.stereo)))
    return Fail(out, "cannot be written");
  return 0;
}
