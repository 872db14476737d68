#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "tools/film/output.h"
#include "tools/film/worker.h"

namespace {

constexpr std::size_t kRoom = 4;  // pictures that wait to be encoded

class PictureFolder final : public Output {
 public:
  explicit PictureFolder(std::string folder) : folder_(std::move(folder)) {}

  std::string Open() override {
    std::error_code error;
    std::filesystem::create_directory(folder_, error);
    return error ? "no folder that can be made: " + error.message() : WhyNotWritable(folder_);
  }
  void AddPicture(const std::string& name, WindowPixels pixels) override {
    worker_.Add([file = folder_ + "/" + name + ".png", pixels = std::move(pixels)] {
      const std::string error = WritePng(file, Reduce(pixels));
      return error.empty() ? error : file + ": " + error;
    });
  }
  std::string GetError() override { return worker_.GetError(); }
  std::string Finish() override { return worker_.Finish(); }

 private:
  std::string folder_;
  Worker worker_{kRoom};
};

}  // namespace

std::unique_ptr<Output> MakePictureFolder(const std::string& folder) { return std::make_unique<PictureFolder>(folder); }

std::string WhyNotWritable(const std::string& folder) {
  if (::access(folder.c_str(), W_OK | X_OK) == 0) return {};
  return "no file can be made in " + folder + ": " + std::strerror(errno);
}
