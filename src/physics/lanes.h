// Four floats in one vector register, by the vector extension that GCC and clang share.
#pragma once

#include <bit>
#include <cstdint>

namespace GalePhysics {

using Lanes = float __attribute__((vector_size(16)));
using LaneMask = std::int32_t __attribute__((vector_size(16)));

/// The lanes that a comparison found true, as bits 0 to 3.
inline unsigned TrueLanes(const LaneMask& mask) {
#ifdef __SSE__
  return static_cast<unsigned>(__builtin_ia32_movmskps(std::bit_cast<Lanes>(mask)));
#else
  return (mask[0] & 1u) | (mask[1] & 2u) | (mask[2] & 4u) | (mask[3] & 8u);
#endif
}

}  // namespace GalePhysics
