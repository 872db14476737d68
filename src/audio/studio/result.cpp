#include "audio/studio/result.h"

namespace Studio {

const char* ResultText(Result result) {
  switch (result) {
    case Result::kOk:
      return "No errors.";
    case Result::kInvalidHandle:
      return "There is no such event, instance or bus.";
    case Result::kNotInitialised:
      return "The sound system is not initialised.";
    case Result::kFileNotFound:
      return "The bank file cannot be read.";
    case Result::kNotABank:
      return "The file is no sound bank.";
    case Result::kBankVersion:
      return "The bank file is of another version.";
    case Result::kBankDamaged:
      return "The bank file is cut or damaged.";
    case Result::kBankLoaded:
      return "The bank's events are loaded already.";
    case Result::kEventNotFound:
      return "No loaded bank has the event.";
    case Result::kBusNotFound:
      return "There is no such bus.";
    case Result::kSoundDamaged:
      return "The sound in the bank cannot be decoded.";
    case Result::kSoundTooLong:
      return "The sound in the bank is longer than is allowed.";
    case Result::kTooManyInstances:
      return "There are too many event instances.";
    case Result::kNoLoopback:
      return "The sound library cannot render into memory.";
  }
  return "Unknown result.";
}

}  // namespace Studio
