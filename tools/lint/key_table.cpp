#include "tools/lint/key_table.h"

#include <array>

namespace {

using enum FieldType;

constexpr FieldSchema kTransform[] = {{"", kVec3}, {"", kQuaternion}, {"", kMatrix34}, {"", kVec3}};
constexpr FieldSchema kRigidBody[] = {{"", kVec3},
                                      {"", kVec3},
                                      {"", kVec3},
                                      {"inverseMass", kFloat},
                                      {"damping", kFloat},
                                      {"", kVec3},
                                      {"", kVec3},
                                      {"", kMatrix33},
                                      {"", kMatrix33},
                                      {"rotationLocked_", kBool},
                                      {"num force generators", kGeneratorList},
                                      {"num force generators I'm a base of", kGeneratorList}};
constexpr FieldSchema kSprite[] = {{"row", kFloat},
                                   {"columns", kFloat},
                                   {"start frame", kFloat},
                                   {"end frame", kFloat},
                                   {"r", kFloat},
                                   {"g", kFloat},
                                   {"b", kFloat},
                                   {"a", kFloat},
                                   {"mesh type", kInt},
                                   {"visibility", kBool},
                                   {"shader name", kString},
                                   {"texture path", kString}};
constexpr FieldSchema kSphere[] = {{"size", kFloat},          {"type", kInt},
                                   {"restitution", kFloat},   {"ghost", kBool},
                                   {"collision group", kInt}, {"radius", kFloat}};
constexpr FieldSchema kBox[] = {{"size", kFloat},          {"type", kInt}, {"restitution", kFloat}, {"ghost", kBool},
                                {"collision group", kInt}, {"", kVec3}};

constexpr FieldSchema kGivePoints[] = {{"PointsGiven", kInt}, {"Hits To Break", kInt}, {"Is Treasure Chest", kBool}};

constexpr FieldSchema kDeathTimer[] = {{"Time", kFloat}};
constexpr FieldSchema kSegmentManager[] = {{"number of segments", kSegmentList}};
constexpr FieldSchema kObjectiveManager[] = {{"Sections", kObjectiveList}};
constexpr FieldSchema kSpawnsObjects[] = {{"archtypename", kString},
                                          {"TimeBeforeFirstSpawn", kFloat},
                                          {"spawnrate", kFloat},
                                          {"YRange", kFloat},
                                          {"", kVec3}};
constexpr FieldSchema kEmitter[] = {{"textureName", kString}, {"particleCount", kInt}};
constexpr FieldSchema kBasicEmitter[] = {{"textureName", kString},
                                         {"particleCount", kInt},
                                         {"minLifespan", kFloat},
                                         {"maxLifeSpan", kFloat},
                                         {"x", kFloat},
                                         {"y", kFloat},
                                         {"z", kFloat},  // where they start: from
                                         {"x", kFloat},
                                         {"y", kFloat},
                                         {"z", kFloat},  // and to
                                         {"x", kFloat},
                                         {"y", kFloat},
                                         {"z", kFloat},  // velocity
                                         {"x", kFloat},
                                         {"y", kFloat},
                                         {"z", kFloat},
                                         {"x", kFloat},
                                         {"y", kFloat},
                                         {"z", kFloat},  // acceleration
                                         {"x", kFloat},
                                         {"y", kFloat},
                                         {"z", kFloat},
                                         {"x", kFloat},
                                         {"y", kFloat},
                                         {"z", kFloat},  // scale
                                         {"x", kFloat},
                                         {"y", kFloat},
                                         {"z", kFloat},
                                         {"spawnIntervalMin", kFloat},
                                         {"spawnIntervalMax", kFloat}};
constexpr FieldSchema kFishAnimator[] = {{"NumberOfAnimationFrames", kInt}};
constexpr FieldSchema kForceCurrency[] = {
    {"Team", kInt}, {"Max", kInt}, {"ResetSpeed", kFloat}, {"ChargeRules", kBool}};
constexpr FieldSchema kGravity[] = {{"My ID", kInt}, {"", kVec3}};
constexpr FieldSchema kSpring[] = {{"My ID", kInt},          {"spring constant", kFloat},   {"rest length", kFloat},
                                   {"breakLength_", kFloat}, {"breakIfOverLength_", kBool}, {"breakable_", kBool}};
constexpr FieldSchema kController[] = {
    {"ScoreID", kString}, {"CurrencyID", kString}, {"AutoPlay", kBool}, {"Controller", kInt}, {"Charge", kBool}};
constexpr FieldSchema kPrison[] = {{"", kVec3}, {"", kVec3}};
constexpr FieldSchema kRainbowFish[] = {{"startingframe", kInt}};
constexpr FieldSchema kShadowGrowth[] = {{"ScaleFactor", kFloat}};
constexpr FieldSchema kWobbly[] = {{"My ID", kInt},
                                   {"forwardPower", kFloat},
                                   {"_sidewaysPower", kFloat},
                                   {"_sidewaysPeriod", kFloat},
                                   {"_lastWobbleTime", kFloat},
                                   {"_wobbleBackwards", kBool}};

constexpr FieldSchema kBroadSide[] = {{"fireInterval", kFloat}};
constexpr FieldSchema kOneWay[] = {{"Butts", kBool}};
constexpr FieldSchema kVortex[] = {{"pulling constant", kFloat},
                                   {"point distance", kFloat},
                                   {"points given", kInt},
                                   {"is used to exit the stage", kBool}};

constexpr FieldSchema kNull[] = {{"Runtime", kInt}};
constexpr FieldSchema kCannonFall[] = {
    {"Rate", kFloat}, {"RateVariation", kFloat}, {"Speed", kFloat}, {"speedVariation", kFloat}};

constexpr auto kComponents = std::to_array<BlockSchema>({
    {"Transform", kTransform},
    {"ScriptBox", {}},
    {"RigidBody", kRigidBody},
    {"Sprite", kSprite},
    {"GivePoints", kGivePoints},
    {"SphereCollider", kSphere},
    {"BoxCollider", kBox},
});
constexpr auto kScripts = std::to_array<BlockSchema>({
    {"barnaclelogic", {}},
    {"class GameTimer", {}},
    {"bpe", kBasicEmitter},
    {"bosshealth", {}},
    {"broadside", kBroadSide},
    {"CameraCenterer", {}},
    {"Clacky", {}},
    {"Clickable", {}},
    {"CollisionCheckScript", {}},
    {"color-changer", {}},
    {"DeathTimer", kDeathTimer},
    {"dizzy", {}},
    {"fishanimator", kFishAnimator},
    {"follow", {}},
    {"ForceCurrency", kForceCurrency},
    {"gravity", kGravity},
    {"spring", kSpring},
    {"fountain", {}},
    {"class LerpVecAnimator", {}},
    {"class LerpSizeAnimator", {}},
    {"class LerpOpacityAnimator", {}},
    {"LogoScreenScript", {}},
    {"makeawhale", {}},
    {"ObjectiveManager", kObjectiveManager},
    {"onewayintostage", kOneWay},
    {"particleemitter", kEmitter},
    {"patricidal", {}},
    {"PiratePathing", {}},
    {"CharacterController", kController},
    {"ppa", {}},
    {"pointmovment", {}},
    {"PrisonScript", kPrison},
    {"rainbowfish", kRainbowFish},
    {"sandlogic", {}},
    {"spawner", kSpawnsObjects},
    {"stunsonhit", {}},
    {"ToggleButton", {}},
    {"VelocityCap", {}},
    {"vortex", kVortex},
    {"RespawnNodeManager", {}},
    {"ScoreScript", {}},
    {"InsertName", {}},
    {"SegmentManager", kSegmentManager},
    {"ShadowGrowth", kShadowGrowth},
    {"Spawner", {}},
    {"SplashScreenLogic", {}},
    {"SquidAnimator", {}},
    {"squishy", {}},
    {"TitleScreenScript", {}},
    {"wsl", {}},
    {"wobblypuller", kWobbly},
});
constexpr auto kObjectives = std::to_array<BlockSchema>({
    {"CannonFall", kCannonFall},
    {"HitObjects", {}},
    {"KingOfTheHill", {}},
    {"Crown", {}},
    {"CollectTheRings", {}},
    {"OctoMiners", {}},
    {"WhaleBoss", {}},
    {"lotbb", {}},
    {"NULL", kNull},
});

template <std::size_t N>
const BlockSchema* Find(const std::array<BlockSchema, N>& blocks, std::string_view name) {
  for (const BlockSchema& block : blocks)
    if (block.name == name) return &block;
  return nullptr;
}

}  // namespace

const BlockSchema* FindComponentSchema(std::string_view name) { return Find(kComponents, name); }
const BlockSchema* FindScriptSchema(std::string_view name) { return Find(kScripts, name); }
const BlockSchema* FindObjectiveSchema(std::string_view name) { return Find(kObjectives, name); }
std::span<const BlockSchema> ComponentSchemas() { return kComponents; }
std::span<const BlockSchema> ScriptSchemas() { return kScripts; }
std::span<const BlockSchema> ObjectiveSchemas() { return kObjectives; }
