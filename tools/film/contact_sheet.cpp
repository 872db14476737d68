#include <algorithm>
#include <filesystem>
#include <utility>

#include "tools/film/output.h"
#include "tools/film/worker.h"

namespace {

constexpr std::size_t kRoom = 4;  // pictures that wait for their place

class ContactSheet final : public Output {
 public:
  ContactSheet(std::string file, int rows, int columns, int width, int height)
      : file_(std::move(file)),
        columns_(columns),
        cells_(rows * columns),
        sheet_(columns * (width + kSheetGap) - kSheetGap, rows * (height + kSheetGap) - kSheetGap) {}

  std::string Open() override { return WhyNotWritable(std::filesystem::path(file_).parent_path()); }
  void AddPicture(const std::string& /*name*/, WindowPixels pixels) override {
    if (placed_ == cells_) return;
    worker_.Add([this, place = placed_++, pixels = std::move(pixels)] {
      Place(Reduce(pixels), place);
      return std::string{};
    });
  }
  std::string GetError() override { return {}; }
  std::string Finish() override {
    worker_.Finish();
    return WritePng(file_, sheet_);
  }

 private:
  void Place(const Image& picture, int place) {
    const int left = place % columns_ * (picture.width + kSheetGap);
    const int top = place / columns_ * (picture.height + kSheetGap);
    for (int y = 0; y < picture.height; ++y)
      std::copy_n(picture.Row(y), 3 * picture.width, sheet_.Row(top + y) + 3 * static_cast<std::ptrdiff_t>(left));
  }

  std::string file_;
  int columns_;
  int cells_;
  int placed_ = 0;
  Image sheet_;
  Worker worker_{kRoom};
};

}  // namespace

std::unique_ptr<Output> MakeContactSheet(const std::string& file, int rows, int columns, int width, int height) {
  return std::make_unique<ContactSheet>(file, rows, columns, width, height);
}
