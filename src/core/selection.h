// The objects that the mouse has picked, by ID, in the order of picking. The cursor changes it, the editor shows it.
#pragma once

#include <cstdint>
#include <vector>

/// Empties the selection.
void ClearSelection();

/// Appends an object; one that is selected already stays where it is.
void AddToSelection(std::uint32_t objectId);

const std::vector<std::uint32_t>& GetSelection();
