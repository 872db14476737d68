#include "graphics/sprite.h"

#include "core/field_bar.h"
#include "core/serializer.h"
#include "graphics/renderer.h"

namespace {

// A line without a value would not be told from a missing one, so empty names are written as this word.
constexpr char kNoName[] = "NULLSTRING";

const std::string& NameForFile(const std::string& name) {
  static const std::string none = kNoName;
  return name.empty() ? none : name;
}

}  // namespace

void Sprite::Serialize(Serializer& writer) {
  writer.BeginComponent("Sprite");
  writer.WriteFloat("row", row);
  writer.WriteFloat("columns", columns);
  writer.WriteFloat("start frame", startFrame);
  writer.WriteFloat("end frame", endFrame);
  writer.WriteFloat("r", r);
  writer.WriteFloat("g", g);
  writer.WriteFloat("b", b);
  writer.WriteFloat("a", a);
  writer.WriteInt("mesh type", meshType);
  writer.WriteBool("visibility", visible);
  writer.WriteString("shader name", NameForFile(shaderName));
  writer.WriteString("texture path", NameForFile(texturePath));
  writer.EndBlock();
}

void Sprite::Deserialize(Serializer& reader) {
  row = reader.ReadFloat();
  columns = reader.ReadFloat();
  startFrame = reader.ReadFloat();
  endFrame = reader.ReadFloat();
  r = reader.ReadFloat();
  g = reader.ReadFloat();
  b = reader.ReadFloat();
  a = reader.ReadFloat();
  meshType = reader.ReadInt();
  visible = reader.ReadBool();
  shaderName = reader.ReadString();
  texturePath = reader.ReadString();
  if (GetRenderer().GetTexture(texturePath) == 0) GetRenderer().LoadTexture(texturePath);
}

void Sprite::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup("Sprite");
  bar.Add("row", &row);
  bar.Add("columns", &columns);
  bar.Add("start frame", &startFrame);
  bar.Add("end frame", &endFrame);
  bar.Add("r", &r);
  bar.Add("g", &g);
  bar.Add("b", &b);
  bar.Add("a", &a);
  bar.Add("visibility", &visible);
  bar.Add("Sprite Name", &texturePath);
  bar.EndGroup();
}
