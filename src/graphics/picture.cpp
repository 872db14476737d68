#include "graphics/picture.h"

#include <png.h>

#include <algorithm>
#include <csetjmp>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <vector>

#include "core/data_place.h"
#include "core/file_name.h"

namespace {

using Bytes = std::span<const unsigned char>;

constexpr std::size_t kMaxFile = std::size_t{64} * 1024 * 1024;  // bytes
constexpr png_alloc_size_t kMaxChunk = 8'000'000;                // bytes of a chunk that is no pixels
constexpr std::size_t kMaxCompression = 1032;                    // deflate makes no more than that of a byte
constexpr std::size_t kChannels = 4;

// Everything that libpng allocated goes with it.
class PngReader {
 public:
  explicit PngReader(Bytes& rest) {
    png_ = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, Fail, Ignore);
    if (png_ == nullptr) return;
    info_ = png_create_info_struct(png_);
    png_set_read_fn(png_, &rest, Take);
  }
  PngReader(const PngReader&) = delete;
  PngReader& operator=(const PngReader&) = delete;
  ~PngReader() { png_destroy_read_struct(&png_, &info_, nullptr); }

  bool IsUsable() const { return info_ != nullptr; }
  png_structp Png() const { return png_; }
  png_infop Info() const { return info_; }

  // False when libpng found a fault. It leaves `step` by a jump, so nothing in there may need a destructor.
  template <class Step>
  bool Try(Step step) {
    if (setjmp(png_jmpbuf(png_)) != 0) return false;
    step(png_, info_);
    return true;
  }

 private:
  [[noreturn]] static void Fail(png_structp png, png_const_charp /*why*/) { png_longjmp(png, 1); }
  static void Ignore(png_structp /*png*/, png_const_charp /*why*/) {}
  static void Take(png_structp png, png_bytep to, std::size_t count) {
    Bytes& rest = *static_cast<Bytes*>(png_get_io_ptr(png));
    if (count > rest.size()) png_error(png, "cut");
    std::copy_n(rest.begin(), count, to);
    rest = rest.subspan(count);
  }

  png_structp png_ = nullptr;
  png_infop info_ = nullptr;
};

void SetLimits(png_structp png) {
  png_set_user_limits(png, kMaxPictureSide, kMaxPictureSide);
  png_set_chunk_malloc_max(png, kMaxChunk);
  // Only what makes the pixels is read, and no profile is unpacked.
  png_set_keep_unknown_chunks(png, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
  // A picture with a wrong checksum is shown as it is, as other programs of this kind do.
  png_set_crc_action(png, PNG_CRC_QUIET_USE, PNG_CRC_QUIET_USE);
  png_set_option(png, PNG_IGNORE_ADLER32, PNG_OPTION_ON);
  // But what does not fit together, as data left over, is a fault.
  png_set_benign_errors(png, 0);
}

// Of what the file says, before anything is allocated for it: neither too many pixels, nor more than it can hold.
bool IsInProportion(png_structp png, png_infop info, std::size_t fileSize) {
  const std::size_t width = png_get_image_width(png, info);
  const std::size_t height = png_get_image_height(png, info);
  return width * height <= kMaxPictureArea && png_get_rowbytes(png, info) * height <= kMaxCompression * fileSize;
}

bool HasTransparency(png_structp png, png_infop info) {
  return (png_get_color_type(png, info) & PNG_COLOR_MASK_ALPHA) != 0 || png_get_valid(png, info, PNG_INFO_tRNS) != 0;
}

void AskForRgba(png_structp png) {
  png_set_expand(png);
  png_set_scale_16(png);
  png_set_gray_to_rgb(png);
  png_set_add_alpha(png, 0xff, PNG_FILLER_AFTER);
}

// All passes of an interlaced picture; without `lowest` the rows are decoded and dropped.
void ReadRows(png_structp png, png_infop info, unsigned char* lowest) {
  const std::size_t height = png_get_image_height(png, info);
  const std::size_t stride = png_get_image_width(png, info) * kChannels;
  const int passes = png_set_interlace_handling(png);
  png_read_update_info(png, info);
  if (lowest != nullptr && png_get_rowbytes(png, info) != stride) png_error(png, "not RGBA");
  for (int pass = 0; pass < passes; ++pass)
    for (std::size_t row = height; row-- > 0;)
      png_read_row(png, lowest == nullptr ? nullptr : lowest + row * stride, nullptr);
  png_read_end(png, nullptr);
}

bool IsOpaque(const unsigned char* pixels, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i)
    if (pixels[kChannels * i + 3] != 0xff) return false;
  return true;
}

bool ReadBytes(const std::string& path, std::vector<unsigned char>& bytes) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return false;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  if (error || size > kMaxFile) return false;
  bytes.resize(static_cast<std::size_t>(size));
  std::ifstream file(path, std::ios::binary);
  return !!file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace

bool DecodePicture(Bytes file, PictureUse use, Picture& picture) {
  picture = {};
  Bytes rest = file;
  PngReader reader(rest);
  const auto readHeader = [](png_structp png, png_infop info) {
    SetLimits(png);
    png_read_info(png, info);
  };
  if (!reader.IsUsable() || !reader.Try(readHeader)) return false;
  if (!IsInProportion(reader.Png(), reader.Info(), file.size())) return false;
  picture.width = static_cast<int>(png_get_image_width(reader.Png(), reader.Info()));
  picture.height = static_cast<int>(png_get_image_height(reader.Png(), reader.Info()));
  picture.opaque = !HasTransparency(reader.Png(), reader.Info());
  const std::size_t pixels = static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
  if (use == PictureUse::kPixels) picture.pixels = std::make_unique_for_overwrite<unsigned char[]>(pixels * kChannels);
  const auto readRows = [lowest = picture.pixels.get()](png_structp png, png_infop info) {
    if (lowest != nullptr) AskForRgba(png);
    ReadRows(png, info, lowest);
  };
  if (!reader.Try(readRows)) return false;
  if (picture.pixels != nullptr && !picture.opaque) picture.opaque = IsOpaque(picture.pixels.get(), pixels);
  return true;
}

bool ReadPicture(const std::string& folder, const std::string& name, PictureUse use, Picture& picture) {
  std::vector<unsigned char> bytes;
  return IsPlainName(name) && ReadBytes(FindData(folder + "/" + name), bytes) && DecodePicture(bytes, use, picture);
}
