#include "editor/files/recovery.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <system_error>
#include <vector>

#include "core/print.h"
#include "core/replace_file.h"

namespace {

namespace fs = std::filesystem;

constexpr char kFolder[] = "autosaves";
constexpr std::string_view kName = "recover-";
constexpr char kOpenMark[] = "autosaves/recover.open";

// The numbers of the copies that are there, lowest first.
std::vector<int> Numbers() {
  std::vector<int> numbers;
  std::error_code error;
  for (fs::directory_iterator entry(kFolder, error), end; !error && entry != end; entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    if (!name.starts_with(kName)) continue;
    int number = 0;
    const char* last = name.data() + name.size();
    const auto read = std::from_chars(name.data() + kName.size(), last, number);
    if (read.ec == std::errc{} && read.ptr == last && number >= 0) numbers.push_back(number);
  }
  std::sort(numbers.begin(), numbers.end());
  return numbers;
}

std::string NameOf(int number) { return std::string(kFolder) + '/' + std::string(kName) + std::to_string(number); }

}  // namespace

void Recovery::Start() {
  started_ = true;
  since_.reset();
  std::error_code error;
  const std::vector<int> numbers = Numbers();
  if (fs::exists(kOpenMark, error) && !numbers.empty()) offer_ = NameOf(numbers.back());
}

// By the clock and not by frames, of which a slow machine shows few.
void Recovery::Update(const std::optional<SceneVersion>& unsaved, const std::function<std::string()>& sceneText,
                      Clock::time_point now) {
  if (!started_) return;
  if (!unsaved || unsaved == held_)
    since_.reset();
  else if (!since_)
    since_ = now;
  else if (now - *since_ >= kPeriod)
    PutAside(*unsaved, sceneText);
}

void Recovery::PutAside(const SceneVersion& version, const std::function<std::string()>& sceneText) {
  if (!started_) return;
  since_.reset();
  if (Write(sceneText())) held_ = version;
}

// What is on offer stays, however many copies follow.
bool Recovery::Write(const std::string& text) {
  std::error_code error;
  fs::create_directories(kFolder, error);
  std::vector<int> numbers = Numbers();
  const int next = numbers.empty() ? 0 : numbers.back() + 1;
  if (const std::string fault = ReplaceFile(NameOf(next), text); !fault.empty()) {
    Print("%s: %s, unsaved changes are not put aside\n", NameOf(next).c_str(), fault.c_str());
    return false;
  }
  if (!marked_) ReplaceFile(kOpenMark, "{\n}\n");
  marked_ = true;
  std::erase_if(numbers, [this](int number) { return NameOf(number) == offer_; });
  for (std::size_t i = 0; i + kKept <= numbers.size(); ++i) fs::remove(NameOf(numbers[i]), error);
  return true;
}

void Recovery::End() {
  if (!started_) return;
  std::error_code error;
  if (offer_.empty()) fs::remove(kOpenMark, error);  // else the next run offers it again
  *this = {};
}
