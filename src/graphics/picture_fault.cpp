#include "graphics/picture_fault.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

#include "core/data_place.h"
#include "core/file_name.h"
#include "graphics/picture.h"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kHead = 24;  // bytes up to the end of a PNG's width and height
constexpr std::size_t kWidthAt = 16;
constexpr std::size_t kHeightAt = 20;
constexpr std::string_view kPngSign = "\x89PNG";

struct Form {
  std::string_view sign;
  std::size_t at;  // byte where it stands
  const char* name;
};
constexpr std::array<Form, 6> kForms = {{{"\xFF\xD8\xFF", 0, "a JPEG"},
                                         {"GIF8", 0, "a GIF"},
                                         {"BM", 0, "a BMP"},
                                         {"WEBP", 8, "a WebP"},
                                         {"<svg", 0, "an SVG"},
                                         {"<?xml", 0, "an SVG"}}};

std::string Lowered(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

// A file that somebody may have meant: the same name in other letters, or with an extension.
std::string FindAlike(const std::string& folder, const std::string& name) {
  std::error_code error;
  for (const std::string& place : FindDataFolders(folder))
    for (fs::directory_iterator entry(place, error), end; !error && entry != end; entry.increment(error)) {
      const std::string there = entry->path().filename().string();
      if (Lowered(there) == Lowered(name) || Lowered(there) == Lowered(name) + ".png") return there;
    }
  return {};
}

std::string ReadHead(const std::string& path) {
  std::string head(kHead, '\0');
  std::ifstream file(path, std::ios::binary);
  file.read(head.data(), static_cast<std::streamsize>(kHead));
  head.resize(static_cast<std::size_t>(file.gcount()));
  return head;
}

std::uint32_t BigEndian(std::string_view bytes) {
  std::uint32_t number = 0;
  for (const char byte : bytes) number = number << 8 | static_cast<unsigned char>(byte);
  return number;
}

std::string FormFault(const std::string& head) {
  if (head.starts_with(kPngSign)) return {};
  for (const Form& form : kForms)
    if (head.compare(std::min(form.at, head.size()), form.sign.size(), form.sign) == 0)
      return std::string("is ") + form.name + ": save it as PNG, another ending of its name does not do";
  return "is no PNG";
}

std::string SizeFault(const std::string& head) {
  if (head.size() < kHead) return {};
  const std::uint64_t width = BigEndian(std::string_view(head).substr(kWidthAt, 4));
  const std::uint64_t height = BigEndian(std::string_view(head).substr(kHeightAt, 4));
  if (width <= kMaxPictureSide && height <= kMaxPictureSide && width * height <= kMaxPictureArea) return {};
  return "is too large, " + std::to_string(width) + " x " + std::to_string(height) +
         " pixels: at most 8192 each way and 4096 x 4096 in all";
}

}  // namespace

std::string PictureFault(const std::string& folder, const std::string& name) {
  if (!IsPlainName(name)) return "is not read: name a picture in Texture/ without a folder";
  std::error_code error;
  const std::string path = FindData(folder + "/" + name);
  if (!fs::is_regular_file(path, error)) {
    const std::string alike = FindAlike(folder, name);
    return alike.empty() ? "is not in Texture/" : "is not in Texture/, but " + alike + " is: write it like that";
  }
  const std::string head = ReadHead(path);
  for (const auto fault : {FormFault, SizeFault})
    if (std::string text = fault(head); !text.empty()) return text;
  Picture picture;
  return ReadPicture(folder, name, PictureUse::kCheck, picture) ? std::string{}
                                                                : "is damaged: save it as PNG once more";
}
