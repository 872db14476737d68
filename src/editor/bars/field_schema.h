// What the description of level files says of the fields on a bar, by the names of their groups and their own.
#pragma once

#include <string_view>
#include <vector>

#include "editor/bars/tweak_bar.h"
#include "lint/key_table.h"

/// For each entry of the bar the block of a file that it is described in: of a group its own, of what stands in groups
/// that of the innermost one that has any; null for none.
std::vector<const BlockSchema*> BlocksOf(const TweakBar& bar);

/// The block's field that bars call so; null for none.
const FieldSchema* FindFieldSchema(const BlockSchema& block, std::string_view name);
