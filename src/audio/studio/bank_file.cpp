#include "audio/studio/bank_file.h"

#include <algorithm>
#include <concepts>
#include <filesystem>
#include <fstream>
#include <set>
#include <system_error>

namespace Studio {

namespace {

// The last two bytes show at once when a transfer has changed line ends.
constexpr std::string_view kMagic = "BRINEB\r\n";
constexpr std::uint32_t kVersion = 1;
constexpr std::uint32_t kEventBank = 1;
constexpr std::uint32_t kStringsBank = 2;
constexpr std::size_t kHeaderSize = 32;
constexpr std::size_t kEventSize = 32;
constexpr std::size_t kPathSize = 16;
constexpr std::uintmax_t kMaxFileSize = 256u << 20;  // bytes
constexpr std::string_view kEventPrefix = "event:/";

// The caller knows that the bytes are there.
template <std::unsigned_integral T>
T Get(std::span<const std::uint8_t> bytes, std::size_t at) {
  T value = 0;
  for (std::size_t i = 0; i < sizeof(T); ++i) value |= static_cast<T>(static_cast<T>(bytes[at + i]) << (8 * i));
  return value;
}

template <std::unsigned_integral T>
void Put(std::vector<std::uint8_t>& bytes, T value) {
  for (std::size_t i = 0; i < sizeof(T); ++i) bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

Result Fail(Result result, std::string& why, std::string text) {
  why = std::move(text);
  return result;
}

// Whether offset and length name bytes behind the table and inside the file.
bool IsInside(std::span<const std::uint8_t> bytes, std::size_t tableEnd, std::uint64_t offset, std::uint64_t length) {
  return offset >= tableEnd && offset <= bytes.size() && length > 0 && length <= bytes.size() - offset;
}

std::string Entry(std::size_t index) { return "entry " + std::to_string(index + 1) + ": "; }

struct Header {
  std::uint32_t kind = 0;
  std::size_t count = 0;
};

Result ParseHeader(std::span<const std::uint8_t> bytes, Header& header, std::string& why) {
  if (bytes.size() < kMagic.size() || !std::equal(kMagic.begin(), kMagic.end(), bytes.begin()))
    return Fail(Result::kNotABank, why, "does not begin as a sound bank does");
  if (bytes.size() < kHeaderSize) return Fail(Result::kBankDamaged, why, "ends inside the header");
  const auto version = Get<std::uint32_t>(bytes, 8);
  if (version != kVersion)
    return Fail(Result::kBankVersion, why,
                "is of version " + std::to_string(version) + ", not " + std::to_string(kVersion));
  header.kind = Get<std::uint32_t>(bytes, 12);
  if (header.kind != kEventBank && header.kind != kStringsBank)
    return Fail(Result::kBankDamaged, why, "is of the unknown kind " + std::to_string(header.kind));
  const auto size = Get<std::uint64_t>(bytes, 16);
  if (size != bytes.size())
    return Fail(Result::kBankDamaged, why,
                "has " + std::to_string(bytes.size()) + " bytes, its header says " + std::to_string(size));
  const auto count = Get<std::uint32_t>(bytes, 24);
  const std::size_t entrySize = header.kind == kEventBank ? kEventSize : kPathSize;
  if (count > kMaxEvents || kHeaderSize + count * entrySize > bytes.size())
    return Fail(Result::kBankDamaged, why, "cannot have " + std::to_string(count) + " entries");
  header.count = count;
  return Result::kOk;
}

Result ParseEvents(std::size_t count, BankContent& content, std::string& why) {
  const std::span<const std::uint8_t> bytes = content.bytes;
  std::set<std::uint64_t> numbers;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t at = kHeaderSize + i * kEventSize;
    const auto number = Get<std::uint64_t>(bytes, at);
    const auto category = Get<std::uint32_t>(bytes, at + 8);
    const auto offset = Get<std::uint64_t>(bytes, at + 16);
    const auto length = Get<std::uint64_t>(bytes, at + 24);
    if (!numbers.insert(number).second) return Fail(Result::kBankDamaged, why, Entry(i) + "its number is used twice");
    if (category > static_cast<std::uint32_t>(Category::kMusic))
      return Fail(Result::kBankDamaged, why, Entry(i) + "unknown category " + std::to_string(category));
    if (!IsInside(bytes, kHeaderSize + count * kEventSize, offset, length))
      return Fail(Result::kBankDamaged, why, Entry(i) + "its sound lies outside the file");
    content.events.push_back({number, static_cast<Category>(category),
                              bytes.subspan(static_cast<std::size_t>(offset), static_cast<std::size_t>(length))});
  }
  return Result::kOk;
}

Result ParsePaths(std::size_t count, BankContent& content, std::string& why) {
  const std::span<const std::uint8_t> bytes = content.bytes;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t at = kHeaderSize + i * kPathSize;
    const auto offset = Get<std::uint32_t>(bytes, at + 8);
    const auto length = Get<std::uint32_t>(bytes, at + 12);
    if (!IsInside(bytes, kHeaderSize + count * kPathSize, offset, length))
      return Fail(Result::kBankDamaged, why, Entry(i) + "its path lies outside the file");
    const auto text = bytes.subspan(offset, length);
    if (!IsEventPath({reinterpret_cast<const char*>(text.data()), text.size()}))
      return Fail(Result::kBankDamaged, why, Entry(i) + "its path is none");
    content.paths.push_back({Get<std::uint64_t>(bytes, at), std::string(text.begin(), text.end())});
  }
  return Result::kOk;
}

std::vector<std::uint8_t> WriteHeader(std::uint32_t kind, std::uint64_t size, std::size_t count) {
  std::vector<std::uint8_t> bytes(kMagic.begin(), kMagic.end());
  bytes.reserve(static_cast<std::size_t>(size));
  Put(bytes, kVersion);
  Put(bytes, kind);
  Put(bytes, size);
  Put(bytes, static_cast<std::uint32_t>(count));
  Put(bytes, std::uint32_t{0});
  return bytes;
}

}  // namespace

// The 64-bit FNV-1a hash (Fowler, Noll, Vo).
std::uint64_t EventNumber(std::string_view path) {
  std::uint64_t hash = 14695981039346656037u;
  for (const char c : path) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211u;
  return hash;
}

bool IsEventPath(std::string_view path) {
  return path.starts_with(kEventPrefix) && path.size() > kEventPrefix.size() && path.size() <= kMaxPathLength &&
         std::all_of(path.begin(), path.end(), [](char c) { return c > ' ' && c <= '~'; });
}

Result ParseBank(std::vector<std::uint8_t> bytes, BankContent& content, std::string& why) {
  Header header;
  Result result = ParseHeader(bytes, header, why);
  if (result != Result::kOk) return result;
  BankContent parsed;
  parsed.bytes = std::move(bytes);
  result = header.kind == kEventBank ? ParseEvents(header.count, parsed, why) : ParsePaths(header.count, parsed, why);
  if (result == Result::kOk) content = std::move(parsed);
  return result;
}

Result ReadBankFile(const std::string& path, std::vector<std::uint8_t>& bytes, std::string& why) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  if (error) return Fail(Result::kFileNotFound, why, error.message());
  if (size > kMaxFileSize) return Fail(Result::kBankDamaged, why, "is larger than 256 MB");
  std::ifstream file(path, std::ios::binary);
  bytes.resize(static_cast<std::size_t>(size));
  if (!file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size)))
    return Fail(Result::kFileNotFound, why, "cannot be read");
  return Result::kOk;
}

std::vector<std::uint8_t> WriteEventBank(std::span<const BankSource> sources) {
  std::uint64_t offset = kHeaderSize + sources.size() * kEventSize;
  std::uint64_t size = offset;
  for (const BankSource& source : sources) size += source.sound.size();
  std::vector<std::uint8_t> bytes = WriteHeader(kEventBank, size, sources.size());
  for (const BankSource& source : sources) {
    Put(bytes, EventNumber(source.path));
    Put(bytes, static_cast<std::uint32_t>(source.category));
    Put(bytes, std::uint32_t{0});
    Put(bytes, offset);
    Put(bytes, static_cast<std::uint64_t>(source.sound.size()));
    offset += source.sound.size();
  }
  for (const BankSource& source : sources) bytes.insert(bytes.end(), source.sound.begin(), source.sound.end());
  return bytes;
}

std::vector<std::uint8_t> WriteStringsBank(std::span<const BankSource> sources) {
  std::size_t offset = kHeaderSize + sources.size() * kPathSize;
  std::size_t size = offset;
  for (const BankSource& source : sources) size += source.path.size();
  std::vector<std::uint8_t> bytes = WriteHeader(kStringsBank, size, sources.size());
  for (const BankSource& source : sources) {
    Put(bytes, EventNumber(source.path));
    Put(bytes, static_cast<std::uint32_t>(offset));
    Put(bytes, static_cast<std::uint32_t>(source.path.size()));
    offset += source.path.size();
  }
  for (const BankSource& source : sources) bytes.insert(bytes.end(), source.path.begin(), source.path.end());
  return bytes;
}

}  // namespace Studio
