// What every call into the sound layer answers with.
#pragma once

namespace Studio {

enum class Result : int {
  kOk = 0,
  kInvalidHandle,
  kNotInitialised,
  kFileNotFound,
  kNotABank,
  kBankVersion,
  kBankDamaged,
  kBankLoaded,
  kEventNotFound,
  kBusNotFound,
  kSoundDamaged,
  kSoundTooLong,
  kTooManyInstances,
  kNoLoopback,
};

/// One short English text for each result, without a line end; any other number gets a text too.
const char* ResultText(Result result);

}  // namespace Studio
