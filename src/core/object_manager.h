// Owns every object of the scene. The list's order is the order of updates and of drawing. Objects enter through
// AddObject, CreateObject and LoadLevel and leave through RemoveDeadObjects; pointers to them are good for the frame,
// IDs for ever. Main thread only.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/game_object.h"

/// What a floor above adds to every load and save of a level.
class LevelExtension {
 public:
  virtual ~LevelExtension() = default;
  /// Around each load; loads nest.
  virtual void BeginLoad() = 0;
  virtual void EndLoad() = 0;
  /// Before a save writes anything: an object to write ahead of the list, or null. Not owned by the caller.
  virtual GameObject* BeginSave() = 0;
};

class ObjectManager {
 public:
  using ObjectList = std::vector<std::unique_ptr<GameObject>>;
  using Builder = void (*)(GameObject&);

  /// At this many objects a load stops with a message and later ones give nothing.
  static constexpr std::size_t kMaxObjects = 20000;
  /// Loads inside loads (a script that is being read may load) beyond this give a message and nothing.
  static constexpr int kMaxLoadDepth = 8;
  /// What a load may cost together with all loads inside it; each bound says once that it is reached. What would be
  /// read beyond the bytes is not loaded, further scripts are skipped, further messages are not told.
  static constexpr std::size_t kMaxLoadBytes = std::size_t{32} * 1024 * 1024;
  static constexpr int kMaxScripts = 20000;
  static constexpr int kMaxMessages = 100;

  /// Makes the cursor and the camera object, which are in no list and have ID 0. The builders give them their
  /// components; called once, before anything else is made, and without builders in every fresh scene.
  void BuildSpecialObjects(Builder buildCursor, Builder buildCamera);
  void BuildSpecialObjects() { BuildSpecialObjects(buildCursor_, buildCamera_); }
  GameObject& GetCursor() const { return *cursorObject_; }
  GameObject& GetCamera() const { return *cameraObject_; }
  /// Installs the extension; not owned.
  void SetLevelExtension(LevelExtension* extension) { extension_ = extension; }

  /// Appends the object under a fresh ID (but see ReturnIdToNext) and returns the ID. The drawing order is not touched.
  std::uint32_t AddObject(std::unique_ptr<GameObject> object);
  /// Adds a new empty object and asks for a new drawing order.
  std::uint32_t CreateObject();
  /// The object of that ID, or null.
  GameObject* GetObject(std::uint32_t id) const;
  /// The first alive object in list order with that exact, non-empty name, or null.
  GameObject* FindObjectByName(std::string_view name) const;
  /// How many IDs lead to an object: as many as there are objects.
  std::size_t CountIds() const { return objectsById_.size(); }
  /// Walk it by index against its live size: updates may append.
  const ObjectList& GetObjects() const { return objects_; }

  /// Destroys every object that is not alive. Destructors may add objects, load levels and mark others dead: those
  /// already passed go next time.
  void RemoveDeadObjects();
  /// Marks every object dead, the non-Core ones first.
  void KillAll();
  /// Stable sort by depth, lowest z first, if something was created or loaded since the last call.
  void SortIfNeeded();

  /// Puts the objects of these IDs in this order, those not named behind them.
  void SetOrder(const std::vector<std::uint32_t>& ids, bool sortDue);
  /// Whether something was created or loaded since the last SortIfNeeded.
  bool IsSortDue() const { return needsSort_; }
  /// The next object that is added gets this ID instead of a fresh one: it is the one that had it and comes back. An ID
  /// that an object bears is not given twice; 0 for none.
  void ReturnIdToNext(std::uint32_t id) { returnedId_ = id; }

  /// Makes the objects of a level or archetype file and returns those of this file in its order. A missing or empty
  /// file gets a message and gives nothing; a damaged one gives what could be read.
  std::vector<GameObject*> LoadLevel(const std::string& fileName = "TempSave");
  /// The same from a text in memory; `name` stands for it in messages.
  std::vector<GameObject*> LoadText(const std::string& name, const std::string& text);
  /// Counts a script of the load that runs; false when it and the loads around it have made too many.
  bool TakeScriptSlot(const Serializer& reader);
  /// Writes the extension's object and every non-Core object; false with a message when the file cannot be written.
  bool SaveLevel(const std::string& fileName = "TempSave");

  /// Destroys everything and starts the IDs anew, as at the start of the process.
  void Reset();

 private:
  // The outermost load that runs, with all inside it.
  struct Load {
    std::size_t bytes = 0;
    int scripts = 0;
    bool toldDepth = false;
    bool toldBytes = false;
  };

  bool MayLoad(const std::string& fileName);
  void ReadDocument(Serializer& reader, std::vector<GameObject*>& created);
  void ReadObjects(Serializer& reader, std::vector<GameObject*>& created);
  GameObject* BeginObject(Serializer& reader, std::vector<GameObject*>& created);

  friend ObjectManager FreshSceneValue(const ObjectManager& old);

  Builder buildCursor_ = nullptr;
  Builder buildCamera_ = nullptr;
  std::unique_ptr<GameObject> cursorObject_;
  std::unique_ptr<GameObject> cameraObject_;
  ObjectList objects_;
  std::unordered_map<std::uint32_t, GameObject*> objectsById_;
  std::uint32_t lastId_ = 0;
  std::uint32_t returnedId_ = 0;
  bool needsSort_ = false;
  LevelExtension* extension_ = nullptr;
  int loadDepth_ = 0;
  Load load_;
  bool reportedFull_ = false;
};

/// That of a fresh scene: what is installed and the builders stay.
ObjectManager FreshSceneValue(const ObjectManager& old);

/// The manager of the scene that runs. It is never destroyed: object destructors may build the next screen, which must
/// not happen at process exit.
ObjectManager& Objects();
