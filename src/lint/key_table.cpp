#include "lint/key_table.h"

#include <array>

#include "graphics/particle_emitter.h"
#include "lint/number.h"
#include "match/score/give_points.h"
#include "physics/collider.h"

namespace {

using enum FieldType;
using enum Mirrored;

constexpr Range kAny = {};
constexpr Range kShare = {.low = 0.0f, .high = 1.0f};
constexpr Range kPart = {.low = 0.0f, .high = 1.0f, .aboveLow = true};
constexpr Range kNotNegative = {.low = 0.0f};
constexpr Range kPositive = {.low = 0.0f, .aboveLow = true};
constexpr Range kSize = {.low = 0.0f, .rule = "negative-size", .why = "read as 0"};
constexpr Range kPlayer = {.low = 0.0f, .high = 3.0f};
constexpr Range kGroup = {.low = 0.0f,
                          .high = float{GalePhysics::kMaxCollisionGroup},
                          .rule = "collision-group",
                          .why = "the game takes the nearest"};
constexpr Range kParticles = {.low = 0.0f,
                              .high = float{ParticleEmitter::kMaxParticles},
                              .rule = "particle-count",
                              .why = "the game takes the nearest"};
constexpr Range kLists = {
    .low = 0.0f, .high = float{kMostGenerators}, .rule = "too-many-generators", .why = "the rest would be skipped"};

constexpr FieldSchema kTransform[] = {
    {"", "position", kVec3, "where the object is; solids stay at z 0", "world units", kAny, "position"},
    {"", "", kQuaternion, "how it is turned, of length 1; for an angle a about z cos(a/2), 0, 0, sin(a/2)", "", kAny,
     "orientation"},
    {"", "", kMatrix34, "the orientation as a rotation matrix, and the position again; made anew at the first update",
     "", kAny, "matrix"},
    {"", "graphicsScale", kVec3, "size of the picture, which is 1 x 1 by itself; physics ignores it", "world units",
     kAny, "graphics scale"}};
constexpr FieldSchema kRigidBody[] = {
    {"", "velocity", kVec3, "of the start", "units/s", kAny, "velocity", kWay},
    {"", "acceleration", kVec3, "applied all the time", "units/s^2", kAny, "acceleration", kWay},
    {"", "forceTotal", kVec3, "what generators have gathered; zeros", "", kAny, "force total"},
    {"inverseMass",
     "inverseMass",
     kFloat,
     "0 is immovable",
     "1/mass",
     {.low = 0.0f, .rule = "negative-mass", .why = "read as 0"}},
    {"damping", "damping", kFloat, "both velocities are multiplied by it; 1 never slows down, 0 is best avoided",
     "a sub-step", kShare},
    {"", "angular velocity", kVec3, "about each axis; use z only", "radians/s", kAny, "angular velocity", kSpin},
    {"", "", kVec3, "zeros", "", kAny, "torque total"},
    {"", "", kMatrix33, "in the body's own frame; the identity does for most things", "", kAny, "inverse inertia"},
    {"", "", kMatrix33, "made anew in every sub-step", "", kAny, "inverse inertia in the world"},
    {"rotationLocked_", "rotation locked", kBool, "true: it never turns"},
    {"num force generators", "", kGeneratorList,
     "how many `generator ID` lines follow, each with the `My ID` of a generator further up", "", kLists},
    {"num force generators I'm a base of", "", kGeneratorList, "likewise, of springs that hang on this object", "",
     kLists}};
constexpr FieldSchema kSprite[] = {
    {"row", "row", kFloat, "part of the picture that is shown: 1 all, 0.25 a frame of four", "of the width", kPart},
    {"columns", "columns", kFloat, "the same upwards", "of the height", kPart},
    {"start frame", "start frame", kFloat, "where that part begins", "of the width", kShare},
    {"end frame", "end frame", kFloat, "the same upwards", "of the height", kShare},
    {"r", "r", kFloat, "red that the picture is multiplied by", "", kShare},
    {"g", "g", kFloat, "green", "", kShare},
    {"b", "b", kFloat, "blue", "", kShare},
    {"a", "a", kFloat, "opacity", "", kShare},
    {"mesh type",
     "",
     kInt,
     "0 picture, 1 outline of a circle, 3 picture over the whole screen",
     "",
     {.low = 0.0f, .high = 3.0f, .rule = "mesh-type", .why = "nothing is drawn"}},
    {"visibility", "visibility", kBool, "false: not drawn"},
    {"shader name", "", kString, "`default`"},
    {"texture path", "Sprite Name", kString, "file name in `Texture/`, without folder"}};
constexpr FieldSchema kGivePoints[] = {
    {"PointsGiven",
     "Points Given",
     kInt,
     "of a hit by a player who is faster than 2",
     "points",
     {.low = 0.0f,
      .high = float{GivePoints::kMostPoints},
      .rule = "points-range",
      .why = "each hit makes up to that many bubbles"}},
    {"Hits To Break",
     "Hits To Break",
     kInt,
     "until it breaks; 0 never breaks",
     "hits",
     {.low = 0.0f, .rule = "negative-hits", .why = "read as 0, which never breaks"}},
    {"Is Treasure Chest", "Is Treasure Chest", kBool, "true: 1 point a hit, and all of them when it breaks"}};
constexpr FieldSchema kSphere[] = {
    {"size", "broad phase size", kFloat, "radius of the circle that holds the shape", "world units", kSize},
    {"type", "", kInt, "tells a sphere", "", {.low = 1.0f, .high = 1.0f, .rule = "collider-type"}},
    {"restitution", "restitution", kFloat, "bounciness; a contact takes the mean of both", "", kNotNegative},
    {"ghost", "isGhost", kBool, "true: nothing bounces off it"},
    {"collision group", "collision group", kInt, "two of group 0 never meet", "", kGroup},
    {"radius", "radius", kFloat, "of the sphere", "world units", kSize}};
constexpr FieldSchema kBox[] = {
    {"size", "broad phase size", kFloat, "radius of the circle that holds the shape", "world units", kSize},
    {"type", "", kInt, "tells a box", "", {.low = 0.0f, .high = 0.0f, .rule = "collider-type"}},
    {"restitution", "restitution", kFloat, "bounciness; a contact takes the mean of both", "", kNotNegative},
    {"ghost", "isGhost", kBool, "true: nothing bounces off it"},
    {"collision group", "collision group", kInt, "two of group 0 never meet", "", kGroup},
    {"", "x size, y size, z size", kVec3, "half the edges; z 0 makes it flat", "world units", kSize, "half extents"}};

constexpr FieldSchema kDeathTimer[] = {
    {"Time",
     "end time",
     kFloat,
     "until the object goes, or breaks if it gives points; a segment sets it to its own duration",
     "s",
     {.low = 0.0f, .aboveLow = true, .rule = "no-time", .why = "the object goes at once"}}};
constexpr FieldSchema kSegments[] = {
    {"number of segments", "", kSegmentList,
     "how many segments follow, each as `levelName_` (text), `duration_` (s, above 0), `rotationAngle_` (degrees), "
     "`distance_` (world units); `SentinelSegment: NoMoreSegments` ends them",
     "", kNotNegative}};
constexpr FieldSchema kObjectives[] = {
    {"Sections", "", kObjectiveList,
     "how many objectives follow, each as `Objective` with its name, and its values; `No more objectives: Done` ends "
     "them",
     "", kNotNegative}};
constexpr FieldSchema kSpawner[] = {
    {"archtypename", "ArchType Name", kString, "file name of the archetype"},
    {"TimeBeforeFirstSpawn", "Time Before First Spawn", kFloat, "before the first one", "s of real time", kNotNegative},
    {"spawnrate",
     "Spawn Rate",
     kFloat,
     "between two",
     "s of real time",
     {.low = 0.0f, .aboveLow = true, .rule = "spawn-rate", .why = "or it spawns in every frame"}},
    {"YRange", "YRange", kFloat, "up and down from the object", "world units", kNotNegative},
    {"", "spawnvelocity", kVec3, "of what is sent; to the left it is mirrored", "units/s", kAny, "velocity", kWay}};
constexpr FieldSchema kEmitter[] = {
    {"textureName", "TextureName", kString, "file name in `Texture/`; the emitter does not load it"},
    {"particleCount", "MaxParticles", kInt, "most particles alive at a time", "", kParticles}};
constexpr FieldSchema kBasicEmitter[] = {
    {"textureName", "TextureName", kString, "file name in `Texture/`; the emitter does not load it"},
    {"particleCount", "MaxParticles", kInt, "most particles alive at a time", "", kParticles},
    {"minLifespan", "minLifespan", kFloat, "least life of a particle", "s", kNotNegative},
    {"maxLifeSpan", "maxLifeSpan", kFloat, "greatest life", "s", kNotNegative},
    {"", "startingPositionMin", kFlatVec3, "lower corner of the box around the object in which they start",
     "world units", kAny, "startingPositionMin", kLeast},
    {"", "startingPositionMax", kFlatVec3, "its upper corner", "world units", kAny, "startingPositionMax", kMost},
    {"", "minVelocity", kFlatVec3, "least velocity", "units/s", kAny, "minVelocity", kLeast},
    {"", "maxVelocity", kFlatVec3, "greatest velocity", "units/s", kAny, "maxVelocity", kMost},
    {"", "minAcceleration", kFlatVec3, "least acceleration", "units/s^2", kAny, "minAcceleration", kLeast},
    {"", "maxAcceleration", kFlatVec3, "greatest acceleration", "units/s^2", kAny, "maxAcceleration", kMost},
    {"", "minScale", kFlatVec3, "least size; only x counts", "world units", kAny, "minScale"},
    {"", "maxScale", kFlatVec3, "greatest size; only x counts", "world units", kAny, "maxScale"},
    {"spawnIntervalMin", "spawnIntervalMin", kFloat, "least time between two", "s", kNotNegative},
    {"spawnIntervalMax", "spawnIntervalMax", kFloat, "greatest time; at most one comes a frame", "s", kNotNegative}};
constexpr FieldSchema kFishAnimator[] = {{"NumberOfAnimationFrames",
                                          "NumberofFramesinAnimation",
                                          kInt,
                                          "side by side in the strip",
                                          "frames",
                                          {.low = 1.0f}}};
constexpr FieldSchema kForceCurrency[] = {
    {"Team", "", kInt, "index of the player whose requests it answers", "", kPlayer},
    {"Max", "", kInt, "largest force", "units/s", kPositive},
    {"ResetSpeed", "", kFloat, "from 0 to the largest force", "s of real time", kPositive},
    {"ChargeRules", "", kBool, "true: a charge is paid out whole; false: launches spend a budget"}};
constexpr FieldSchema kGravity[] = {
    {"My ID", "", kGeneratorId, "number by which bodies of this file name it"},
    {"", "Gravity", kVec3, "of every body that lists it", "units/s^2", kAny, "acceleration", kWay}};
constexpr FieldSchema kSpring[] = {
    {"My ID", "", kGeneratorId, "number by which bodies of this file name it"},
    {"spring constant", "springConstant_", kFloat, "pull for each unit of stretch", "force/unit", kNotNegative},
    {"rest length", "restLength_", kFloat, "at which it does not pull", "world units", kNotNegative},
    {"breakLength_", "breakLength_", kFloat, "kept, without effect", "world units"},
    {"breakIfOverLength_", "breakIfOverLength_", kBool, "kept, without effect"},
    {"breakable_", "breakable_", kBool, "kept, without effect"}};
constexpr FieldSchema kController[] = {
    {"ScoreID", "", kString, "name of the object that shows the player's points"},
    {"CurrencyID", "", kString, "name of the object with the player's gauge"},
    {"AutoPlay", "", kBool, "whether the computer flies; decided anew at the first update"},
    {"Controller", "", kInt, "slot of the gamepad", "", kPlayer},
    {"Charge", "", kBool, "true: holding the trigger charges; false: each press launches at once"}};
constexpr FieldSchema kPrison[] = {
    {"", "", kVec3, "upper left of the arena that players are kept in", "world units", kAny, "corner"},
    {"", "", kVec3, "of the arena", "world units", kNotNegative, "size"}};
constexpr FieldSchema kRainbowFish[] = {{"startingframe", "startingframe", kInt,
                                         "which frame the fishanimator before it begins with, from 0", "frames",
                                         kNotNegative}};
constexpr FieldSchema kShadowGrowth[] = {{"ScaleFactor",
                                          "",
                                          kFloat,
                                          "by which it grows until it is larger than 1",
                                          "world units/frame",
                                          {.low = 0.0f, .aboveLow = true, .why = "it would never stop"}}};
constexpr FieldSchema kWobbly[] = {
    {"My ID", "", kGeneratorId, "number by which bodies of this file name it"},
    {"forwardPower", "forwardPower", kFloat, "acceleration to the target for each unit of distance", "1/s^2"},
    {"_sidewaysPower", "_sidewaysPower", kFloat, "acceleration to the side", "units/s^2"},
    {"_sidewaysPeriod", "_sidewaysPeriod", kFloat, "from one side to the other", "s", kNotNegative},
    {"_lastWobbleTime", "_lastWobbleTime", kFloat, "game time of the last turn", "s"},
    {"_wobbleBackwards", "_wobbleBackwards", kBool, "which side it pushes to"}};
constexpr FieldSchema kBroadSide[] = {
    {"fireInterval",
     "",
     kFloat,
     "from the end of a volley to the next",
     "s",
     {.low = 0.0f, .aboveLow = true, .rule = "fire-interval", .why = "or it never pauses"}}};
constexpr FieldSchema kOneWay[] = {{"Butts", "", kTrue, "read and ignored; `true`"}};
constexpr FieldSchema kVortex[] = {
    {"pulling constant", "pulling constant", kFloat, "of the pull, 15 times a frame; below 0 it pushes", "force"},
    {"point distance", "point distance", kFloat, "from the middle at which an exit swallows; 0 never", "world units",
     kNotNegative},
    {"points given", "points given", kInt, "kept, without effect", "points"},
    {"is used to exit the stage", "is used to exit the stage", kBool, "true: an exit; false: the way in"}};

constexpr FieldSchema kNull[] = {{"Runtime", "", kInt, "how long nothing happens", "s", kNotNegative}};
constexpr FieldSchema kCannonFall[] = {
    {"Rate", "", kFloat, "how often one falls", "balls/s", kNotNegative},
    {"RateVariation", "", kFloat, "width of the range around the rate", "balls/s", kNotNegative},
    {"Speed", "", kFloat, "of the fall", "units/s", kPositive},
    {"speedVariation", "", kFloat, "width of the range around the speed, for each ball", "units/s", kNotNegative}};

constexpr auto kComponents = std::to_array<BlockSchema>({
    {"Transform", "Where the object is; every object has one, first.", kTransform},
    {"ScriptBox", "The object's scripts, one block each, in the order in which they run."},
    {"RigidBody", "Makes the object move; every solid collider needs one.", kRigidBody},
    {"Sprite", "The picture.", kSprite},
    {"GivePoints", "Pays a player who rams the object.", kGivePoints},
    {"SphereCollider", "A round shape to bump into or to overlap.", kSphere},
    {"BoxCollider", "A rectangular shape to bump into or to overlap.", kBox},
});
constexpr auto kScripts = std::to_array<BlockSchema>({
    {"barnaclelogic", "A barnacle on the whale: it passes hits on and pays for them."},
    {"class GameTimer", "The match clock; made by code."},
    {"bpe", "Lays particles around the object.", kBasicEmitter},
    {"bosshealth", "How much the whale can take."},
    {"broadside", "A ship's side that fires volleys of cannonballs.", kBroadSide},
    {"CameraCenterer", "Leans the view to where the action is; on the camera only."},
    {"Clacky", "Does nothing."},
    {"Clickable", "Grows under the mouse and acts when clicked; made by the menus."},
    {"CollisionCheckScript", "Tells code that something touched the object."},
    {"color-changer", "Flashes in the colour of a fast player who hits."},
    {"DeathTimer", "Ends the object after a time.", kDeathTimer},
    {"dizzy", "What a stun does to a player; on players only."},
    {"fishanimator", "A strip of frames, of which each hit by a fast player shows the next.", kFishAnimator},
    {"follow", "Stays beside another object; made by code."},
    {"ForceCurrency", "A player's gauge; made by code.", kForceCurrency},
    {"gravity", "A constant pull, the same for every mass; on the generator host.", kGravity},
    {"spring", "Pulls a body to the object it hangs on; on the generator host.", kSpring},
    {"fountain", "Erupts cannonballs in bursts, when the whale asks for it."},
    {"class LerpVecAnimator", "Moves the object; for code, without effect from a file."},
    {"class LerpSizeAnimator", "Scales the picture; for code, without effect from a file."},
    {"class LerpOpacityAnimator", "Fades the picture; for code, without effect from a file."},
    {"LogoScreenScript", "The first screen; made by code."},
    {"makeawhale", "Becomes the whale, and removes what gives points."},
    {"ObjectiveManager", "The rules of the match, one after another; on `segmentmanager`, after SegmentManager.",
     kObjectives},
    {"onewayintostage", "Lets the object come into the arena through its walls.", kOneWay},
    {"particleemitter", "A pool of particles that lays none by itself.", kEmitter},
    {"patricidal", "Dissolves the copy of the generator host that a saved level begins with."},
    {"PiratePathing", "Sends the whale across the stage in passes."},
    {"CharacterController", "Flies a player; made by code.", kController},
    {"ppa", "What a player is heard to bump into."},
    {"pointmovment", "Flies a point bubble to its display; made by code."},
    {"PrisonScript", "Keeps players inside the arena.", kPrison},
    {"rainbowfish", "Lets the fishanimator before it begin elsewhere.", kRainbowFish},
    {"sandlogic", "Throws up dust under fast players."},
    {"spawner", "Sends out an archetype again and again.", kSpawner},
    {"stunsonhit", "Stuns whichever player it touches."},
    {"ToggleButton", "Shows one of two pictures; made by the menus."},
    {"VelocityCap", "Keeps the body at 13 units a second at most."},
    {"vortex", "A whirlpool that pulls, swallows or lets in.", kVortex},
    {"RespawnNodeManager", "Puts objects back onto free places; used by code."},
    {"ScoreScript", "Counts and shows a player's points; made by code."},
    {"InsertName", "Shakes the view; on the camera only."},
    {"SegmentManager", "The pieces of the stage, one after another; on `segmentmanager`.", kSegments},
    {"ShadowGrowth", "A shadow that grows from nothing.", kShadowGrowth},
    {"Spawner", "A test bench that throws boxes and balls."},
    {"SplashScreenLogic", "The notice about gamepads; made by code."},
    {"SquidAnimator", "Plays a strip of four frames after random rests."},
    {"squishy", "Bulges when something touches the object."},
    {"TitleScreenScript", "The title; made by code."},
    {"wsl", "The end of a match; made by the clock."},
    {"wobblypuller", "Draws bodies to a target, swaying; on the generator host.", kWobbly},
});
constexpr auto kRules = std::to_array<BlockSchema>({
    {"CannonFall", "Cannonballs fall and stun.", kCannonFall},
    {"HitObjects", "Hits pay what the things give."},
    {"KingOfTheHill", "Whoever is alone in the circle is paid."},
    {"Crown", "Whoever wears the crown is paid."},
    {"CollectTheRings", "Players drag rings behind them, which pay each second."},
    {"OctoMiners", "A shoal of golden fish bursts out of the middle."},
    {"WhaleBoss", "Barnacles are knocked off the whale."},
    {"lotbb", "Whoever touched the ball last is paid."},
    {"NULL", "A pause.", kNull},
});

template <std::size_t N>
const BlockSchema* Find(const std::array<BlockSchema, N>& blocks, std::string_view name) {
  for (const BlockSchema& block : blocks)
    if (block.name == name) return &block;
  return nullptr;
}

}  // namespace

std::string RangeText(const Range& range) {
  const bool hasLow = range.low > kAny.low;
  const bool hasHigh = range.high < kAny.high;
  if (!hasLow && !hasHigh) return {};
  if (!hasLow) return "up to " + CanonicalNumber(range.high);
  if (range.low == range.high) return CanonicalNumber(range.low);
  if (range.aboveLow)
    return "above " + CanonicalNumber(range.low) + (hasHigh ? ", to " + CanonicalNumber(range.high) : "");
  return CanonicalNumber(range.low) + (hasHigh ? " to " + CanonicalNumber(range.high) : " and up");
}

const BlockSchema* FindComponentSchema(std::string_view name) { return Find(kComponents, name); }
const BlockSchema* FindScriptSchema(std::string_view name) { return Find(kScripts, name); }
const BlockSchema* FindObjectiveSchema(std::string_view name) { return Find(kRules, name); }
std::span<const BlockSchema> ComponentSchemas() { return kComponents; }
std::span<const BlockSchema> ScriptSchemas() { return kScripts; }
std::span<const BlockSchema> ObjectiveSchemas() { return kRules; }
