// PNG files without compression, for handing made-up pictures to a program that reads nothing else.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace bench {

using Bytes = std::vector<unsigned char>;

namespace detail {

inline void AppendBigEndian(Bytes& out, std::uint32_t value) {
  for (const int shift : {24, 16, 8, 0}) out.push_back(static_cast<unsigned char>(value >> shift));
}

inline std::uint32_t Crc32(const unsigned char* data, std::size_t size) {
  static const std::vector<std::uint32_t> table = [] {
    std::vector<std::uint32_t> entries;
    for (std::uint32_t i = 0; i < 256; ++i) {
      std::uint32_t c = i;
      for (int bit = 0; bit < 8; ++bit) c = (c & 1) != 0 ? 0xEDB88320u ^ (c >> 1) : c >> 1;
      entries.push_back(c);
    }
    return entries;
  }();
  std::uint32_t crc = 0xFFFFFFFFu;
  for (std::size_t i = 0; i < size; ++i) crc = table[(crc ^ data[i]) & 0xFF] ^ (crc >> 8);
  return ~crc;
}

inline std::uint32_t Adler32(const Bytes& data) {
  std::uint32_t a = 1;
  std::uint32_t b = 0;
  for (const unsigned char byte : data) {
    a = (a + byte) % 65521;
    b = (b + a) % 65521;
  }
  return b << 16 | a;
}

inline void AppendChunk(Bytes& out, const std::string& type, const Bytes& body) {
  AppendBigEndian(out, static_cast<std::uint32_t>(body.size()));
  const std::size_t start = out.size();
  out.insert(out.end(), type.begin(), type.end());
  out.insert(out.end(), body.begin(), body.end());
  AppendBigEndian(out, Crc32(out.data() + start, out.size() - start));
}

// A zlib stream of stored blocks, which hold at most 65535 bytes each.
inline Bytes Store(const Bytes& data) {
  Bytes out = {0x78, 0x01};
  for (std::size_t at = 0; at < data.size();) {
    const std::size_t size = std::min<std::size_t>(65535, data.size() - at);
    const auto low = static_cast<unsigned char>(size & 0xFF);
    const auto high = static_cast<unsigned char>(size >> 8);
    out.push_back(at + size == data.size() ? 1 : 0);
    for (const unsigned char byte : {low, high, static_cast<unsigned char>(~low), static_cast<unsigned char>(~high)})
      out.push_back(byte);
    out.insert(out.end(), data.begin() + static_cast<std::ptrdiff_t>(at),
               data.begin() + static_cast<std::ptrdiff_t>(at + size));
    at += size;
  }
  AppendBigEndian(out, Adler32(data));
  return out;
}

}  // namespace detail

/// Writes 8-bit RGBA pixels, top row first. `rgba` holds width x height x 4 bytes; neither side may be 0.
inline void WritePng(const std::filesystem::path& path, int width, int height, const Bytes& rgba) {
  Bytes header;
  detail::AppendBigEndian(header, static_cast<std::uint32_t>(width));
  detail::AppendBigEndian(header, static_cast<std::uint32_t>(height));
  header.insert(header.end(), {8, 6, 0, 0, 0});  // 8 bits, RGBA, not interlaced

  const std::size_t row = static_cast<std::size_t>(width) * 4;
  Bytes rows;
  for (std::size_t at = 0; at < rgba.size(); at += row) {
    rows.push_back(0);  // no filter
    rows.insert(rows.end(), rgba.begin() + static_cast<std::ptrdiff_t>(at),
                rgba.begin() + static_cast<std::ptrdiff_t>(at + row));
  }

  Bytes png = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  detail::AppendChunk(png, "IHDR", header);
  detail::AppendChunk(png, "IDAT", detail::Store(rows));
  detail::AppendChunk(png, "IEND", {});
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(png.data()), static_cast<std::streamsize>(png.size()));
}

}  // namespace bench
