// FNV-1a, 64 bits: a hash that is the same everywhere and needs no library. No protection against forgery.
#pragma once

#include <cstdint>
#include <string_view>
#include <type_traits>

class FnvHash {
 public:
  void Add(std::string_view bytes) {
    for (const char byte : bytes) value_ = (value_ ^ static_cast<unsigned char>(byte)) * kPrime;
  }
  template <class T>
  requires std::is_trivially_copyable_v<T>
  void AddValue(const T& value) { Add({reinterpret_cast<const char*>(&value), sizeof value}); }
  /// Sizes have 64 bits on every machine.
  void AddValue(unsigned long value) {
    const std::uint64_t wide = value;
    Add({reinterpret_cast<const char*>(&wide), sizeof wide});
  }
  std::uint64_t Get() const { return value_; }

 private:
  static constexpr std::uint64_t kPrime = 1099511628211u;

  std::uint64_t value_ = 14695981039346656037u;  // the offset basis
};
