// The names of everything that lint can say. They are stable: the tool, the editor and docs/format-reference.md use the
// same ones. A name that is not in this table does not compile.
#pragma once

#include <array>
#include <string_view>

/// Whether a level passes with it, and what `lint --fix` does about it.
enum class RuleKind {
  kFault,
  kFixed,       ///< a fault that --fix mends
  kUnreadable,  ///< a fault for which --fix leaves the file alone
  kNote,        ///< worth knowing, but right as it is
};

struct Rule {
  std::string_view name;
  RuleKind kind;
  std::string_view meaning;  ///< one sentence
  std::string_view example;  ///< lines that break it, or words on what does
  bool played = false;       ///< it shows only when the file is played
};

inline constexpr auto kLintRules = std::to_array<Rule>({
    // what a file is
    {"unreadable", RuleKind::kUnreadable, "There is no such file, it is empty, or it may not be read.", "a folder"},
    {"too-large", RuleKind::kUnreadable, "The game reads at most 16 MiB.", "a file of 17 MiB"},
    {"document", RuleKind::kUnreadable, "A file is `{`, its objects, `}`, and nothing behind.", "`[` as first line"},
    {"first-line", RuleKind::kFixed, "The first line is `{` alone.", "a byte order mark before `{`"},
    {"unexpected-end", RuleKind::kUnreadable, "A block is not closed.", "the last `}` is missing"},
    {"header", RuleKind::kUnreadable, "A line that ends in `{` opens an object or a block.", "`wall: {`"},
    {"closing-line", RuleKind::kUnreadable, "A line that begins with `}` closes a block.", "`}}`"},
    {"value-line", RuleKind::kUnreadable, "Any other line is `key: value`.", "`Core`"},
    {"outside-object", RuleKind::kUnreadable, "Values and components belong to an object.", "`Name: x` before `1: {`"},
    {"missing-or-shifted", RuleKind::kUnreadable,
     "A block holds its lines in its order: the game reads them by position.", "no `restitution` line"},
    {"too-many", RuleKind::kNote, "After 1000 lines lint only counts.", "a file of 2000 faults"},
    // how it is written
    {"canonical-number", RuleKind::kFixed, "The game saves numbers with up to 6 digits.", "`x_: 1.50`"},
    {"blanks", RuleKind::kFixed, "No blanks around a value, one after the colon.", "`Core:true`"},
    {"leading-blanks", RuleKind::kFixed, "Lines are indented with tabs; the game does not strip blanks.",
     "`  Core: true`"},
    {"indentation", RuleKind::kFixed, "Each open block indents by one tab.", "`Core: true` without tabs"},
    {"empty-line", RuleKind::kFixed, "Files are saved without empty lines.", "an empty line"},
    {"empty-value", RuleKind::kFixed, "An empty value has a blank after the colon.", "`archtypename:`"},
    {"line-end", RuleKind::kFixed, "Lines end with a line feed alone, the last one too.", "lines of another system"},
    {"control-characters", RuleKind::kFault, "The game drops them from texts when it saves.", "a tab in a name"},
    {"component-order", RuleKind::kFault, "The game saves components in a fixed order, Transform first.",
     "Sprite before RigidBody"},
    {"repeated-id", RuleKind::kFixed, "Objects of a file have different numbers.", "`1: {` twice"},
    // values
    {"bad-value", RuleKind::kFault, "A number, bool or closing word is none.", "`restitution: much`"},
    {"wrong-count", RuleKind::kFault, "A count does not fit what follows.", "`Sections: 3` before two"},
    {"out-of-range", RuleKind::kFault, "A number is outside its range.", "`a: 255`"},
    {"reversed-range", RuleKind::kFault, "A least value is above its greatest.", "`minLifespan: 3`, `maxLifeSpan: 1`"},
    // objects
    {"too-many-objects", RuleKind::kFault, "The game makes at most 20000 objects.", "20001 objects"},
    {"too-many-scripts", RuleKind::kFault, "A load makes at most 20000 scripts.", "20001 scripts"},
    {"no-name", RuleKind::kFault, "An object has no name.", "`Name: `"},
    {"nameless", RuleKind::kFault, "`Nameless` sounds like a big fish when it is hit.", "`Name: Nameless`"},
    {"leftover", RuleKind::kFault, "A nameless object with a Transform alone was left by a save.",
     "`Name: Nameless` and a Transform"},
    {"player-name", RuleKind::kFault, "P first and 1 to 5 last is a player's name.", "`Name: Post3`"},
    {"reserved-name", RuleKind::kNote, "Code looks for the object of this name, and finds the first one.",
     "`Name: ScoreText`"},
    {"core-object", RuleKind::kNote, "Among others, a Core object survives a change of level and is never saved.",
     "`Core: true` in a stage"},
    {"no-transform", RuleKind::kFault, "Every object has a Transform.", "an object of a Sprite alone"},
    {"repeated-component", RuleKind::kFault, "A second component of a kind replaces the first.", "two Sprites"},
    {"unknown-component", RuleKind::kFault, "There is no such component.", "`Component: \"Spirit\" {`"},
    {"unknown-script", RuleKind::kFault, "There is no such script.", "`Component: \"Gravity\" {`"},
    {"made-by-code", RuleKind::kNote, "A script that code makes does nothing good from a file.", "`wsl` in a stage"},
    {"not-a-rotation", RuleKind::kFault, "An orientation has length 1.", "`r_: 2`"},
    {"matrix", RuleKind::kNote, "A Transform's matrix repeats its orientation and position.",
     "position `x_: 3`, matrix `x_: 0`"},
    {"flat-size", RuleKind::kNote, "A picture of no width or height is not seen.", "graphics scale 0, 0, 0"},
    {"off-plane", RuleKind::kNote, "Solids stay at z 0, or they miss each other.", "a crate at `z_: 1`"},
    {"far-away", RuleKind::kNote, "More than 100 units from the middle nobody sees it.", "`x_: 4000`"},
    {"starting-place", RuleKind::kNote, "Players start at (2, 2), (-2, 2), (2, -2) and (-2, -2).",
     "an immovable crate at `x_: 2`, `y_: 2`"},
    {"touching", RuleKind::kNote, "Immovable solids that touch meet in every sub-step for nothing.",
     "two crates edge to edge"},
    // bodies and colliders
    {"negative-mass", RuleKind::kFault, "inverseMass below 0 is read as 0.", "`inverseMass: -1`"},
    {"damping-0", RuleKind::kNote, "It stops at once, and slow motion leaves it at 1.", "`damping: 0`"},
    {"immovable-unlocked", RuleKind::kFault, "What nothing can move still spins when it is hit.",
     "`inverseMass: 0`, `rotationLocked_: false`"},
    {"two-colliders", RuleKind::kNote, "Both are tested against each other too.", "a sphere and a box"},
    {"collider-without-body", RuleKind::kFault, "A solid collider needs a RigidBody.", "a crate of a collider alone"},
    {"collider-type", RuleKind::kFault, "1 is a sphere, 0 a box.", "SphereCollider with `type: 0`"},
    {"collision-group", RuleKind::kFault, "Groups are 0 to 14.", "`collision group: 15`"},
    {"negative-size", RuleKind::kFault, "A size below 0 is read as 0.", "`radius: -1`"},
    {"size-too-small", RuleKind::kNote, "Hits outside of `size` are missed.", "`size: 1`, `radius: 2`"},
    {"no-extent", RuleKind::kNote, "A collider of size 0 is hardly ever hit.", "`radius: 0`"},
    {"turned-box", RuleKind::kNote, "A segment's turn moves things, but does not turn them.",
     "a piece of long boxes, `rotationAngle_: 90`"},
    // force generators
    {"generator-place", RuleKind::kFault, "Force generators stand on the host, which the game saves first.",
     "`gravity` on a crate"},
    {"host", RuleKind::kFault, "The host stands first, Core, at the origin, with `patricidal` and generators alone.",
     "`AForceBox` with a Sprite"},
    {"repeated-generator", RuleKind::kFault, "Generators of a file have different numbers.", "`My ID: 42` twice"},
    {"unknown-generator", RuleKind::kFault, "A body names a generator that no line above defines.",
     "`generator ID: 99`"},
    {"unread-generator", RuleKind::kNote, "No body names the generator: it pushes nothing.",
     "a `gravity` that no body lists"},
    {"spring-base", RuleKind::kFault,
     "A body lists the springs that hang on it in their order, each spring hangs on one body.",
     "`gravity` in the list of springs"},
    {"loose-spring", RuleKind::kNote, "A spring that hangs on nothing pulls nothing.",
     "a `spring` that no body is a base of"},
    {"too-many-generators", RuleKind::kFault, "A body reads at most 1000 numbers a list.",
     "`num force generators: 2000`"},
    // pictures
    {"no-picture", RuleKind::kFault, "Every start prints an error for it.", "`texture path: NULLSTRING`"},
    {"missing-picture", RuleKind::kFault, "No such file in `Texture/`.", "`texture path: nothing.png`"},
    {"unsafe-name", RuleKind::kFault,
     "Names of levels and pictures are plain; a level's may stand behind `examples/` or `autosaves/`.",
     "`levelName_: ../stage`"},
    {"bad-picture", RuleKind::kFault,
     "The file is no PNG that can be read to its end, or above 8192 pixels a side or 4096 x 4096 in all.",
     "a JPEG called `crate1.png`"},
    {"not-preloaded", RuleKind::kNote, "The picture is read in mid-match, or not at all by an emitter.",
     "`texture path: ship.png`"},
    {"not-16-9", RuleKind::kNote, "A picture over the whole screen is stretched to 16:9.",
     "`mesh type: 3` with a square"},
    {"mesh-type", RuleKind::kFault, "There is no mesh 2.", "`mesh type: 2`"},
    {"outside-picture", RuleKind::kNote, "The part that a Sprite shows ends outside of its picture.",
     "`row: 0.5`, `start frame: 0.75`"},
    {"unknown-shader", RuleKind::kFault, "Nothing is drawn without a shader.", "`shader name: shiny`"},
    {"needs-sprite", RuleKind::kFault, "The script acts on the object's Sprite.", "`fishanimator` without one"},
    // scripts
    {"not-solid", RuleKind::kFault, "The script acts on touches, which a ghost never has.", "`stunsonhit` on a ghost"},
    {"not-a-ghost", RuleKind::kFault, "A whirlpool acts on overlaps.", "`vortex` on a solid"},
    {"needs-body", RuleKind::kFault, "The script acts on the object's RigidBody.", "`VelocityCap` without one"},
    {"needs-fishanimator", RuleKind::kFault, "`rainbowfish` acts on a `fishanimator`, within its frames.",
     "`rainbowfish` alone"},
    {"shadow-scale", RuleKind::kFault, "`ShadowGrowth` begins at graphics scale 0.", "graphics scale 1, 1, 0"},
    {"swallows", RuleKind::kNote, "An exit with a point distance swallows players for good.", "`point distance: 1`"},
    {"barnacle-prize", RuleKind::kFault, "A whale's coming removes what has GivePoints.",
     "`barnaclelogic` and GivePoints"},
    {"fire-interval", RuleKind::kFault, "A ship would never pause.", "`fireInterval: 0`"},
    {"particle-count", RuleKind::kFault, "An emitter has 0 to 65536 particles.", "`particleCount: 100000`"},
    {"too-many-particles", RuleKind::kFault, "All emitters together have at most 1048576.", "20 emitters of 65536"},
    {"no-particles", RuleKind::kNote, "An emitter without particles or life shows nothing.", "`particleCount: 0`"},
    // what makes a match
    {"points-range", RuleKind::kFault, "Each hit makes up to that many bubbles.", "`PointsGiven: 1000`"},
    {"negative-hits", RuleKind::kFault, "0 never breaks.", "`Hits To Break: -1`"},
    {"unbroken-chest", RuleKind::kNote, "A chest pays its points when it breaks, and 0 never breaks.",
     "`Hits To Break: 0`, `Is Treasure Chest: true`"},
    {"no-time", RuleKind::kFault, "What lasts no time does not come, or goes at once.", "`duration_: 0`"},
    {"duration-last", RuleKind::kFault, "The object that names a level's duration is the last one, and is empty.",
     "`5.000000` before others"},
    {"no-death-timer", RuleKind::kNote, "What a piece brings stays after it.", "a crate of a piece without DeathTimer"},
    {"no-controller", RuleKind::kFault, "`level1` needs the object `segmentmanager`, or a match never ends.",
     "`level1` without it"},
    {"controller-scripts", RuleKind::kFault, "`segmentmanager` carries SegmentManager, then ObjectiveManager.",
     "the two the other way round"},
    {"controller-name", RuleKind::kFault, "The match's two scripts work on `segmentmanager` alone, and there is one.",
     "SegmentManager on a crate"},
    {"missing-piece", RuleKind::kFault, "A segment's level is not there, or holds nothing.", "`levelName_: nowhere`"},
    {"piece-of-itself", RuleKind::kFault, "A level brings itself in, over others or at once.",
     "`levelName_: level1` in `level1`"},
    {"piece-with-match", RuleKind::kFault, "A piece must not bring a second match.", "a piece with `segmentmanager`"},
    {"unknown-objective", RuleKind::kFault, "There is no such objective.", "`Objective: Regatta`"},
    {"no-objective", RuleKind::kNote, "A match without a rule.", "`Sections: 0`"},
    {"missing-archetype", RuleKind::kFault, "An archetype is not there, or holds nothing.", "`archtypename: kraken`"},
    {"archetype-of-itself", RuleKind::kFault, "A spawner spawns itself, over others or at once.",
     "`archtypename: fish` in `fish`"},
    {"needs-scriptbox", RuleKind::kFault, "Without a ScriptBox the shadow of a cannonball does not grow.",
     "`shadow` without one"},
    {"second-object", RuleKind::kNote, "Of an archetype only the first object is placed.", "an archetype of two"},
    {"never-leaves", RuleKind::kNote, "What is spawned without a DeathTimer piles up.", "a crate without DeathTimer"},
    {"spawn-rate", RuleKind::kFault, "Or it spawns in every frame.", "`spawnrate: 0`"},
    // what shows when it is played (lint --play)
    {"not-played", RuleKind::kFault, "The game broke off, or there is nothing to play.", "a piece of 20000 crates",
     true},
    {"cannot-move", RuleKind::kFault, "A player launches for three game seconds and stays where it is.",
     "a seat between four walls", true},
    {"no-way-out", RuleKind::kFault, "Whoever is there does not come away.", "a pocket behind a ring of stones", true},
    {"stuns-at-once", RuleKind::kFault, "It stuns a player before anything can be done about it.",
     "`stunsonhit` where a player starts", true},
    {"leaves-the-stage", RuleKind::kFault, "A thing that was on the stage is behind its walls.",
     "a ball of group 0, which meets no wall", true},
    {"never-rests", RuleKind::kNote, "A thing of the file never lay still.", "a crate that is stuck in a rock", true},
    {"pays-nobody", RuleKind::kFault, "Nobody gets a point while a rule runs.", "all crates behind rocks", true},
    {"out-of-reach", RuleKind::kNote, "Nobody hit a thing that gives points.", "a crate between four rocks", true},
    {"slow-frames", RuleKind::kFault, "Frames take more than half of their time, without the picture.",
     "a thousand crates in a heap", true},
    {"piles-up", RuleKind::kFault, "Ever more things come, or they stay when the piece is over.", "`spawnrate: 0.01`",
     true},
});

/// A name from the table.
class RuleName {
 public:
  consteval RuleName(const char* name) : rule_(Find(name)) {}  // NOLINT(google-explicit-constructor)
  const Rule& Get() const { return *rule_; }

 private:
  static consteval const Rule* Find(std::string_view name) {
    for (const Rule& rule : kLintRules)
      if (rule.name == name) return &rule;
    throw "no such rule";  // not a constant expression: the build stops
  }

  const Rule* rule_;
};
