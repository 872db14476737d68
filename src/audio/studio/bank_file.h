// Sound banks, as they lie in files. A bank of events holds Ogg Vorbis streams by event number; the strings bank beside
// it maps event paths to those numbers. All integers are little-endian:
//
//   header    8 bytes magic; u32 version; u32 kind; u64 size of the whole file; u32 number of entries; u32 zero
//   events    per entry u64 event number; u32 category; u32 zero; u64 offset and u64 length of the stream
//   strings   per entry u64 event number; u32 offset and u32 length of the path
//
// A reader believes no number before it has held it against the bytes that are there.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "audio/studio/result.h"

namespace Studio {

/// The longest an effect, all effects together, or one round of a piece of music may be, in seconds.
inline constexpr int kMaxSeconds = 600;
inline constexpr std::size_t kMaxEvents = 256;
inline constexpr std::size_t kMaxPathLength = 255;

enum class Category : std::uint32_t { kEffects = 0, kMusic = 1 };

struct BankEvent {
  std::uint64_t number = 0;
  Category category = Category::kEffects;
  std::span<const std::uint8_t> sound;  ///< a view into the bank's bytes
};

struct BankPath {
  std::uint64_t number = 0;
  std::string path;
};

/// One loaded bank; of the two lists one is empty. Moving it keeps the views good, copying would not.
struct BankContent {
  BankContent() = default;
  BankContent(BankContent&&) = default;
  BankContent& operator=(BankContent&&) = default;
  std::vector<std::uint8_t> bytes;
  std::vector<BankEvent> events;
  std::vector<BankPath> paths;
};

/// The number of an event path, the same in every run and every bank.
std::uint64_t EventNumber(std::string_view path);

/// Whether a text may stand in a strings bank: "event:/" and more, visible ASCII without blanks, not too long.
bool IsEventPath(std::string_view path);

/// Takes the bytes of a bank apart. On a fault `content` is unchanged and `why` says what is wrong with the bytes.
Result ParseBank(std::vector<std::uint8_t> bytes, BankContent& content, std::string& why);

/// The whole file; at most 256 MB. On a fault `why` says what is wrong.
Result ReadBankFile(const std::string& path, std::vector<std::uint8_t>& bytes, std::string& why);

/// An event to be written.
struct BankSource {
  std::string path;
  Category category = Category::kEffects;
  std::vector<std::uint8_t> sound;  ///< an Ogg Vorbis stream
};

/// The bytes of a bank of events and of its strings bank, in the order of the sources. The caller has seen to it that
/// the paths are event paths, that no two have one number, and that there are at most kMaxEvents.
std::vector<std::uint8_t> WriteEventBank(std::span<const BankSource> sources);
std::vector<std::uint8_t> WriteStringsBank(std::span<const BankSource> sources);

}  // namespace Studio
