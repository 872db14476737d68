// The bars are drawn past graphics/gl.h, which remembers what stands: it must stand again afterwards.
#include <gtest/gtest.h>

#include <initializer_list>
#include <vector>

#include "editor/bars/bar_view.h"
#include "graphics/offscreen_scene.h"
#include "test_world.h"

namespace {

std::vector<GLint> GlState() {
  std::vector<GLint> state;
  for (const GLenum name : std::initializer_list<GLenum>{
           GL_CURRENT_PROGRAM, GL_TEXTURE_BINDING_2D, GL_ACTIVE_TEXTURE, GL_VERTEX_ARRAY_BINDING,
           GL_ARRAY_BUFFER_BINDING, GL_BLEND_SRC_RGB, GL_BLEND_DST_RGB, GL_BLEND_SRC_ALPHA, GL_BLEND_DST_ALPHA,
           GL_FRAMEBUFFER_BINDING, GL_UNPACK_ROW_LENGTH, GL_VIEWPORT, GL_BLEND, GL_DEPTH_TEST, GL_SCISSOR_TEST,
           GL_CULL_FACE, GL_STENCIL_TEST}) {
    GLint values[4] = {};  // a viewport has four, all others one
    glGetIntegerv(name, values);
    state.insert(state.end(), values, values + 4);
  }
  return state;
}

}  // namespace

TEST(EditorDraw, ShowsTheBarsAndLeavesGlAsItWas) {
  TestWorld world;
  OffscreenContext context;
  if (!context.IsUsable()) GTEST_SKIP() << "no GL context";
  gl::SetEnabled(GL_DEPTH_TEST, true);
  gl::SetEnabled(GL_BLEND, true);
  gl::BlendAlpha();
  gl::Viewport(3, 4, 200, 100);
  gl::ClearColor(1.0f, 1.0f, 1.0f, 1.0f);
  gl::Clear(GL_COLOR_BUFFER_BIT);
  const auto before = GlState();
  TweakBar bar("options");
  float value = 1.0f;
  bar.Add("value", &value);
  BarView view;
  const BarWindow windows[] = {{"options", {&bar}}};
  view.Draw(OffscreenContext::kWidth, OffscreenContext::kHeight);
  EXPECT_EQ(context.ColourAt(0.1f, 0.9f), (std::array<int, 3>{255, 255, 255})) << "hidden";
  view.SetShown(true);
  for (int frame = 0; frame < 3; ++frame)
    view.Run(windows, {}, {}, OffscreenContext::kWidth, OffscreenContext::kHeight);
  view.Draw(OffscreenContext::kWidth, OffscreenContext::kHeight);
  EXPECT_LT(context.ColourAt(0.1f, 0.9f)[0], 100) << "the bar's dark ground";
  EXPECT_EQ(GlState(), before);
  view.Shutdown();
}
