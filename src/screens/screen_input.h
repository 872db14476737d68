// What the start-up screens and the podium take for "go on".
#pragma once

/// Whether A or Start is held on the pad of this slot, 0 to 3.
bool IsContinueHeld(int slot);
/// Whether A or Start went down on it in this frame.
bool IsContinueTriggered(int slot);

/// Whether a, Return or Space is held.
bool IsContinueKeyHeld();
/// Whether one of them went down in this frame.
bool IsContinueKeyTriggered();

/// What ends logo and notice early: the first pad, the keys, Escape too, and a click.
bool IsSkipRequested();
