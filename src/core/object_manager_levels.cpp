// Reading a level file into live objects. All state of a load is local: a script that is being read may load another
// level, which then runs to its end inside this one.
#include <string>

#include "core/object_manager.h"
#include "core/print.h"
#include "core/serializer.h"
#include "core/transform.h"

namespace {

void ReadComponent(Serializer& reader, GameObject* object, std::string_view name) {
  Component* component = object == nullptr ? nullptr : object->AddComponent(name);
  if (component != nullptr) {
    component->Deserialize(reader);
    return;
  }
  Print("%s: %s \"%s\", skipped\n", reader.Where().c_str(),
        object == nullptr ? "component outside an object" : "unknown component", std::string(name).c_str());
  reader.SkipToDepth(reader.GetDepth() - 1);
}

// A document closes as many blocks as it opens, the last with its last line.
void ReportEnd(const Serializer& reader) {
  if (reader.GetDepth() <= 0) return;
  const char* fault = reader.HasMetEnd() ? "unexpected end" : "closing lines do not match, the rest is not read";
  Print("%s: %s\n", reader.Where().c_str(), fault);
}

}  // namespace

bool ObjectManager::MayLoad(const std::string& fileName) {
  if (loadDepth_ == 0) load_ = {};
  if (loadDepth_ >= kMaxLoadDepth) {
    if (!load_.toldDepth)
      PrintPastLimit("%s: more than %d levels load each other, not loaded\n", fileName.c_str(), kMaxLoadDepth);
    load_.toldDepth = true;
    return false;
  }
  if (load_.bytes >= kMaxLoadBytes) {
    if (!load_.toldBytes)
      PrintPastLimit("%s: levels that load each other have more than %zu bytes, not loaded\n", fileName.c_str(),
                     kMaxLoadBytes);
    load_.toldBytes = true;
    return false;
  }
  return true;
}

bool ObjectManager::TakeScriptSlot(const Serializer& reader) {
  if (++load_.scripts == kMaxScripts + 1)
    PrintPastLimit("%s: more than %d scripts, the rest is skipped\n", reader.Where().c_str(), kMaxScripts);
  return load_.scripts <= kMaxScripts;
}

std::vector<GameObject*> ObjectManager::LoadLevel(const std::string& fileName) {
  const PrintLimit limit(fileName.c_str(), kMaxMessages);
  std::vector<GameObject*> created;
  if (!MayLoad(fileName)) return created;
  Serializer reader;
  if (reader.OpenForRead(fileName))
    ReadDocument(reader, created);
  else
    Print("CAN'T FIND YO LEVEL, YA DON GOOFED!\n");
  return created;
}

std::vector<GameObject*> ObjectManager::LoadText(const std::string& name, const std::string& text) {
  const PrintLimit limit(name.c_str(), kMaxMessages);
  std::vector<GameObject*> created;
  if (!MayLoad(name)) return created;
  Serializer reader;
  if (reader.OpenText(name, text)) ReadDocument(reader, created);
  return created;
}

void ObjectManager::ReadDocument(Serializer& reader, std::vector<GameObject*>& created) {
  constexpr std::size_t kEmptyDocument = 8;  // bytes at most of two braces and their line ends
  ++loadDepth_;
  const std::size_t bytes = reader.CountBytesLeft();
  load_.bytes += bytes;
  if (extension_ != nullptr) extension_->BeginLoad();
  ReadObjects(reader, created);
  if (objects_.size() < kMaxObjects) {
    ReportEnd(reader);
    if (created.empty() && bytes > kEmptyDocument)
      Print("%s: holds no object, is it a level?\n", reader.Where().c_str());
  }
  if (extension_ != nullptr) extension_->EndLoad();
  --loadDepth_;
}

// A component leaves its closing line unread, except for ScriptBox; so one closing line may end a component or an
// object, two in a row an object or the document, and a third can only be the document's.
void ObjectManager::ReadObjects(Serializer& reader, std::vector<GameObject*>& created) {
  GameObject* object = nullptr;
  std::string_view key;
  std::string_view value;
  LineKind kind = reader.ReadLine(key, value);
  while (kind != LineKind::kBlockClose && kind != LineKind::kEndOfFile) {
    if (kind == LineKind::kBlockOpen) {
      object = BeginObject(reader, created);
      if (object == nullptr) return;
    } else if (kind == LineKind::kComponentOpen) {
      ReadComponent(reader, object, key);
    }
    for (int closing = 0; closing < 3; ++closing) {
      kind = reader.ReadLine(key, value);
      if (kind != LineKind::kBlockClose) break;
    }
  }
}

GameObject* ObjectManager::BeginObject(Serializer& reader, std::vector<GameObject*>& created) {
  if (objects_.size() >= kMaxObjects) {
    if (!reportedFull_)
      PrintPastLimit("%s: more than %zu objects, the load stops\n", reader.Where().c_str(), kMaxObjects);
    reportedFull_ = true;
    return nullptr;
  }
  GameObject* object = GetObject(CreateObject());
  created.push_back(object);
  object->name = reader.ReadString();
  object->core = reader.ReadString() == "true";
  return object;
}
