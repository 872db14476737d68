// The objects that the mouse has picked, by ID, in the order of picking. The cursor changes it, the editor shows it.
#pragma once

#include <cstdint>
#include <vector>

/// Empties the selection.
void ClearSelection();

/// Appends an object; one that is selected already stays where it is, but counts as picked last. Several overlaps with
/// the cursor in one frame would otherwise show it on the bar as often.
void AddToSelection(std::uint32_t objectId);

/// Selects these alone; the last of them counts as picked last. No pick is counted.
void SetSelection(const std::vector<std::uint32_t>& objectIds);

/// The object that was picked last; 0 when the selection is empty.
std::uint32_t GetLastSelected();

/// Rises with every pick, also of what is selected already.
unsigned CountPicks();

const std::vector<std::uint32_t>& GetSelection();
