#include "tools/lint/descriptions.h"

#include <array>

namespace {

constexpr FieldText kTransform[] = {
    {"position", "world units", "", "where the object is; solids stay at z 0"},
    {"orientation", "", "length 1",
     "how it is turned: a quaternion r, i, j, k; for an angle a about z cos(a/2), 0, 0, sin(a/2)"},
    {"matrix", "", "", "the orientation as a rotation matrix, and the position again; made anew at the first update"},
    {"graphics scale", "world units", "", "size of the picture, which is 1 x 1 by itself; physics ignores it"}};
constexpr FieldText kRigidBody[] = {
    {"velocity", "units/s", "", "of the start"},
    {"acceleration", "units/s^2", "", "applied all the time"},
    {"force total", "", "", "what generators have gathered; zeros"},
    {"", "1/mass", "0 and up", "0 is immovable"},
    {"", "a sub-step", "above 0, to 1", "both velocities are multiplied by it; 1 never slows down"},
    {"angular velocity", "radians/s", "", "about each axis; use z only"},
    {"torque total", "", "", "zeros"},
    {"inverse inertia", "", "", "in the body's own frame; the identity does for most things"},
    {"inverse inertia in the world", "", "", "made anew in every sub-step"},
    {"", "", "", "true: it never turns"},
    {"", "", "0 to 1000", "how many `generator ID` lines follow, each with the `My ID` of a generator further up"},
    {"", "", "0 to 1000", "likewise, of springs that hang on this object"}};
constexpr FieldText kSprite[] = {
    {"", "of the width", "", "part of the picture that is shown: 1 all, 0.25 a frame of four"},
    {"", "of the height", "", "the same upwards"},
    {"", "of the width", "", "where that part begins"},
    {"", "of the height", "", "the same upwards"},
    {"", "", "0 to 1", "red that the picture is multiplied by"},
    {"", "", "0 to 1", "green"},
    {"", "", "0 to 1", "blue"},
    {"", "", "0 to 1", "opacity"},
    {"", "", "0, 1, 3", "0 picture, 1 outline of a circle, 3 picture over the whole screen"},
    {"", "", "", "false: not drawn"},
    {"", "", "", "`default`"},
    {"", "", "", "file name in `Texture/`, without folder"}};
constexpr FieldText kGivePoints[] = {{"", "points", "0 to 100", "of a hit by a player who is faster than 2"},
                                     {"", "hits", "0 and up", "until it breaks; 0 never breaks"},
                                     {"", "", "", "true: 1 point a hit, and all of them when it breaks"}};
constexpr FieldText kSphere[] = {{"", "world units", "0 and up", "radius of the circle that holds the shape"},
                                 {"", "", "1", "tells a sphere"},
                                 {"", "", "", "bounciness; a contact takes the mean of both"},
                                 {"", "", "", "true: nothing bounces off it"},
                                 {"", "", "0 to 14", "two of group 0 never meet"},
                                 {"", "world units", "0 and up", "of the sphere"}};
constexpr FieldText kBox[] = {{"", "world units", "0 and up", "radius of the circle that holds the shape"},
                              {"", "", "0", "tells a box"},
                              {"", "", "", "bounciness; a contact takes the mean of both"},
                              {"", "", "", "true: nothing bounces off it"},
                              {"", "", "0 to 14", "two of group 0 never meet"},
                              {"half extents", "world units", "0 and up", "half the edges; z 0 makes it flat"}};

constexpr FieldText kDeathTimer[] = {{"", "s", "0 and up", "until the object goes, or breaks if it gives points"}};
constexpr FieldText kSegments[] = {{"", "", "0 and up",
                                    "how many segments follow, each as `levelName_` (text), `duration_` "
                                    "(s), `rotationAngle_` (degrees), `distance_` (world units); "
                                    "`SentinelSegment: NoMoreSegments` ends them"}};
constexpr FieldText kObjectives[] = {{"", "", "0 and up",
                                      "how many objectives follow, each as `Objective` with its name, "
                                      "and its values; `No more objectives: Done` ends them"}};
constexpr FieldText kSpawner[] = {{"", "", "", "file name of the archetype"},
                                  {"", "s of real time", "", "before the first one"},
                                  {"", "s of real time", "above 0", "between two"},
                                  {"", "world units", "", "up and down from the object"},
                                  {"velocity", "units/s", "", "of what is sent; to the left it is mirrored"}};
constexpr FieldText kEmitter[] = {{"", "", "", "file name in `Texture/`; the emitter does not load it"},
                                  {"", "", "0 to 65536", "most particles alive at a time"}};
constexpr FieldText kBasicEmitter[] = {
    {"", "", "", "file name in `Texture/`; the emitter does not load it"},
    {"", "", "0 to 65536", "most particles alive at a time"},
    {"", "s", "0 and up", "least life of a particle"},
    {"", "s", "0 and up", "greatest life"},
    {"", "world units", "", "lower corner of the box around the object in which they start", 3},
    {"", "world units", "", "its upper corner", 3},
    {"", "units/s", "", "least velocity", 3},
    {"", "units/s", "", "greatest velocity", 3},
    {"", "units/s^2", "", "least acceleration", 3},
    {"", "units/s^2", "", "greatest acceleration", 3},
    {"", "world units", "", "least size; only x counts", 3},
    {"", "world units", "", "greatest size; only x counts", 3},
    {"", "s", "", "least time between two"},
    {"", "s", "", "greatest time; at most one comes a frame"}};
constexpr FieldText kFish[] = {{"", "frames", "1 and up", "side by side in the strip"}};
constexpr FieldText kGauge[] = {{"", "", "0 to 3", "index of the player whose requests it answers"},
                                {"", "units/s", "above 0", "largest force"},
                                {"", "s of real time", "above 0", "from 0 to the largest force"},
                                {"", "", "", "true: a charge is paid out whole; false: launches spend a budget"}};
constexpr FieldText kGravity[] = {{"", "", "", "number by which bodies of this file name it"},
                                  {"acceleration", "units/s^2", "", "of every body that lists it"}};
constexpr FieldText kSpring[] = {{"", "", "", "number by which bodies of this file name it"},
                                 {"", "force/unit", "", "pull for each unit of stretch"},
                                 {"", "world units", "", "at which it does not pull"},
                                 {"", "world units", "", "kept, without effect"},
                                 {"", "", "", "kept, without effect"},
                                 {"", "", "", "kept, without effect"}};
constexpr FieldText kWobbly[] = {{"", "", "", "number by which bodies of this file name it"},
                                 {"", "1/s^2", "", "acceleration to the target for each unit of distance"},
                                 {"", "units/s^2", "", "acceleration to the side"},
                                 {"", "s", "", "from one side to the other"},
                                 {"", "s", "", "game time of the last turn"},
                                 {"", "", "", "which side it pushes to"}};
constexpr FieldText kController[] = {
    {"", "", "", "name of the object that shows the player's points"},
    {"", "", "", "name of the object with the player's gauge"},
    {"", "", "", "whether the computer flies; decided anew at the first update"},
    {"", "", "0 to 3", "slot of the gamepad"},
    {"", "", "", "true: holding the trigger charges; false: each press launches at once"}};
constexpr FieldText kPrison[] = {{"corner", "world units", "", "upper left of the arena that players are kept in"},
                                 {"size", "world units", "", "of the arena"}};
constexpr FieldText kRainbow[] = {{"", "frames", "", "which frame the fishanimator before it begins with"}};
constexpr FieldText kShadow[] = {{"", "world units/frame", "", "by which it grows until it is larger than 1"}};
constexpr FieldText kBroadSide[] = {{"", "s", "", "from the end of a volley to the next"}};
constexpr FieldText kOneWay[] = {{"", "", "", "read and ignored; `true`"}};
constexpr FieldText kVortex[] = {{"", "force", "", "of the pull, 15 times a frame; below 0 it pushes"},
                                 {"", "world units", "", "from the middle at which an exit swallows; 0 never"},
                                 {"", "points", "", "kept, without effect"},
                                 {"", "", "", "true: an exit; false: the way in"}};
constexpr FieldText kNull[] = {{"", "s", "0 and up", "how long nothing happens"}};
constexpr FieldText kCannonFall[] = {{"", "balls/s", "0 and up", "how often one falls"},
                                     {"", "balls/s", "0 and up", "width of the range around the rate"},
                                     {"", "units/s", "above 0", "of the fall"},
                                     {"", "units/s", "0 and up", "width of the range around the speed, for each ball"}};

constexpr auto kComponentTexts = std::to_array<BlockText>({
    {"Transform", "Where the object is; every object has one, first.", kTransform},
    {"ScriptBox", "The object's scripts, one block each, in the order in which they run."},
    {"RigidBody", "Makes the object move; every solid collider needs one.", kRigidBody},
    {"Sprite", "The picture.", kSprite},
    {"GivePoints", "Pays a player who rams the object.", kGivePoints},
    {"SphereCollider", "A round shape to bump into or to overlap.", kSphere},
    {"BoxCollider", "A rectangular shape to bump into or to overlap.", kBox},
});

constexpr auto kScriptTexts = std::to_array<BlockText>({
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
    {"fishanimator", "A strip of frames, of which each hit by a fast player shows the next.", kFish},
    {"follow", "Stays beside another object; made by code."},
    {"ForceCurrency", "A player's gauge; made by code.", kGauge},
    {"gravity", "A constant pull, the same for every mass.", kGravity},
    {"spring", "Pulls a body to the object it hangs on.", kSpring},
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
    {"rainbowfish", "Lets the fishanimator before it begin elsewhere.", kRainbow},
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
    {"ShadowGrowth", "A shadow that grows from nothing.", kShadow},
    {"Spawner", "A test bench that throws boxes and balls."},
    {"SplashScreenLogic", "The notice about gamepads; made by code."},
    {"SquidAnimator", "Plays a strip of four frames after random rests."},
    {"squishy", "Bulges when something touches the object."},
    {"TitleScreenScript", "The title; made by code."},
    {"wsl", "The end of a match; made by the clock."},
    {"wobblypuller", "Draws bodies to a target, swaying.", kWobbly},
});

constexpr auto kObjectiveTexts = std::to_array<BlockText>({
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

}  // namespace

std::span<const BlockText> ComponentTexts() { return kComponentTexts; }
std::span<const BlockText> ScriptTexts() { return kScriptTexts; }
std::span<const BlockText> ObjectiveTexts() { return kObjectiveTexts; }
