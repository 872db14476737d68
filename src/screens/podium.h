// The four places of the podium.
#pragma once

/// Ends the match and adds each player's portrait and points, in the order of the points, from the left.
void BuildPodium();
