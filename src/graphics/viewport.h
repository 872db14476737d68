// The 16:9 picture inside a window of any shape.
#pragma once

struct Viewport {
  int x = 0;
  int y = 0;
  int width = 1280;
  int height = 720;
};

/// The largest 16:9 area in the middle of the window, in pixels: bars left and right, or top and bottom.
Viewport FitViewport(int windowWidth, int windowHeight);
