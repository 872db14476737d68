// The one page that enters every behaviour script.
#pragma once

/// Enters all scripts under their names, in the order that `brinewhirl-tool scripts` prints. Once, before any level.
void RegisterAllScripts();
