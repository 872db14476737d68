// What a player's hard hit does to the picture.
#pragma once

class GameObject;
namespace GalePhysics {
struct Contact;
}

/// A ripple with its pulse where the bodies met, unless they met softly or the last ripple is too fresh.
void ShowRipple(const GalePhysics::Contact& contact);
/// Shakes the picture along the flight of `player`, whose notice of the contact this is, when the player who hits is
/// fast.
void ShakeOnHardHit(const GameObject& player, const GalePhysics::Contact& contact);
