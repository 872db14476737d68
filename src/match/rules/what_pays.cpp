#include "match/rules/what_pays.h"

namespace {

constexpr PayingThing kThings[] = {
    {"", "crate1.png", Pays::kHit, 1.0f},
    {"", "crate2.png", Pays::kHit, 1.0f},
    {"", "crate3.png", Pays::kHit, 1.0f},
    {"", "ShittyCrate.png", Pays::kHit, 1.0f},
    {"", "fish1.png", Pays::kHit, 2.0f},
    {"", "fish2.png", Pays::kHit, 1.0f},
    {"", "pufferfish.png", Pays::kHit, 3.3f},  // 10 in three hits
    {"", "goldfish.png", Pays::kHit, 5.0f},
    {"", "barnacle.png", Pays::kHit, 5.0f},
    {"CollectTheRings", "ring.png", Pays::kTouch, 1.0f},
    {"KingOfTheHill", "graybubble.png", Pays::kStay, 2.0f},
    {"Crown", "crown.png", Pays::kWear, 3.0f},
    {"lotbb", "blackball.png", Pays::kOwn, 3.0f},
    {"lotbb", "redball.png", Pays::kOwn, 3.0f, 0},
    {"lotbb", "whiteball.png", Pays::kOwn, 3.0f, 1},
    {"lotbb", "blueball.png", Pays::kOwn, 3.0f, 2},
    {"lotbb", "yellowball.png", Pays::kOwn, 3.0f, 3},
};

}  // namespace

std::span<const PayingThing> PayingThings() { return kThings; }
