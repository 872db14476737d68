// The one page that enters every component that files may name.
#pragma once

/// Once, before any level.
void RegisterAllComponents();
