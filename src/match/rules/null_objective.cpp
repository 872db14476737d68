#include "match/rules/null_objective.h"

#include "core/print.h"
#include "core/serializer.h"

void NullObjective::Serialize(Serializer& writer) const {
  WriteType(writer);
  writer.WriteInt("Runtime", runtime);
}

void NullObjective::Deserialize(Serializer& reader) {
  runtime = reader.ReadInt();
  if (runtime >= 0) return;
  // The section after it would be short of the time that this one gives back.
  Print("%s: Runtime %d, taken as 0\n", reader.Where().c_str(), runtime);
  runtime = 0;
}
