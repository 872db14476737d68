// Owns the OpenGL objects that everything is drawn with: programs, meshes, textures and the off-screen scene target.
// A frame is BeginScene, the draws in painter's order, ComposeScreen. A name that is not there draws nothing; no error
// stops the game. Works without a context too (see gl.h). Main thread only.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "core/game_object.h"
#include "graphics/font.h"
#include "graphics/gl.h"
#include "graphics/meshes.h"
#include "graphics/picture_sheet.h"
#include "graphics/shader_program.h"
#include "graphics/texture_upload.h"
#include "graphics/viewport.h"
#include "physics/math/vec3.h"

class Sprite;

class Renderer {
 public:
  static constexpr float kClockStep = 0.0166f;  ///< seconds that both screen clocks advance per composed frame

  /// Depth test, FreeType, the seven programs, the four meshes, the scene target. Once, when the context exists.
  void Init();
  /// Releases everything; before the context goes.
  void Shutdown();

  /// Builds a program from two files in Graphics/GLSL/ and registers it. One that does not compile is not registered,
  /// one that does not link is.
  void CreateProgram(const std::string& name, const std::string& vertexFile, const std::string& fragmentFile);
  /// Fits everything to the platform's present window: viewport, scene target, camera. Sizes of 0 are ignored.
  void FitWindow();
  /// Draws pictures of that size, in pixels, whatever the window's is or becomes; only the camera goes with the window.
  void FitPicture(int width, int height);
  /// While off nothing is drawn, and all else goes on: for frames that nobody looks at. On at first. What it was.
  bool SetDrawing(bool drawing) { return std::exchange(drawing_, drawing); }
  /// Whether somebody could see what is drawn.
  bool IsDrawing() const { return drawing_ && gl::HasContext(); }
  /// Of the whole picture with its black edges, in pixels: the window's, or those of FitPicture.
  int GetPictureWidth() const { return targetWidth_; }
  int GetPictureHeight() const { return targetHeight_; }

  /// Loads, or loads again, one picture from Texture/.
  void LoadTexture(const std::string& name);
  /// The GL name of a loaded picture, or 0.
  GLuint GetTexture(const std::string& name) const { return FindTexture(name).name; }
  /// Loads, or loads again, one font from Texture/Fonts/. One that cannot be read gets messages and has no glyphs.
  void LoadFont(const std::string& name);
  /// The font of that name; one without glyphs when it is not loaded.
  const Font& GetFont(const std::string& name) const;

  /// Starts the frame in the scene target.
  void BeginScene();
  /// Draws the object's sprite, if it has a visible one.
  void DrawSprite(const GameObject& object);
  /// Draws the live particles of every emitter.
  void DrawParticles();
  /// Draws the object's text, if it has a visible one.
  void DrawText(const GameObject& object);
  /// Draws the scene onto the window through the screen shader and advances both clocks, unless they stand.
  void ComposeScreen(bool clocksRun = true);

  /// Which program ComposeScreen uses; not checked.
  void SetScreenShader(const std::string& name) { screen_.shader = name; }
  /// Restarts the ripple at a point in the screen's texture space, (0, 0) lower left to (1, 1).
  void StartRipple(const Vec3& point);
  /// Seconds since the last ripple started, in composed frames.
  float GetWaveTime() const { return screen_.waveTime; }
  /// What the screen program goes by.
  struct Screen {
    float waveTime = 0.0f;  ///< seconds since the last ripple started
    float time = 0.0f;      ///< seconds in all
    Vec3 wavePoint;
    std::string shader;
  };
  const Screen& GetScreen() const { return screen_; }
  void SetScreen(const Screen& screen) { screen_ = screen; }

 private:
  void FitTarget(int width, int height);
  void CreateSceneTarget(int width, int height);
  void DeleteSceneTarget();
  /// The program of that name; one without a GL name when there is none.
  ShaderProgram& GetShader(const std::string& name);
  const Texture& FindTexture(const std::string& name) const;
  /// The smaller levels of new textures, and the small ones among them onto the sheet.
  void FinishNewTextures();
  /// Binds the sprite's picture and sends its window: on the sheet, where the program is one that looks nowhere else.
  void ShowPicture(ShaderProgram& program, const Sprite& sprite, const Texture& texture);
  /// Blending, the program and the camera for a draw into the scene; null when it cannot be drawn.
  ShaderProgram* UseInScene(const std::string& shaderName);
  void ReportFramebufferStatus() const;

  bool drawing_ = true;
  Screen screen_;
  FT_Library fontLibrary_ = nullptr;
  GLuint sceneTexture_ = 0;
  GLuint sceneFramebuffer_ = 0;
  GLuint sceneDepthStencil_ = 0;
  int targetWidth_ = 0;
  int targetHeight_ = 0;
  bool ownSize_ = false;  // of the picture, by FitPicture
  Viewport viewport_;
  std::unordered_map<std::string, Texture> textures_;
  std::vector<std::string> newTextures_;  // names, without their smaller levels yet
  PictureSheet sheet_;
  bool shown_ = false;          // a picture has been composed
  std::array<Mesh, 4> meshes_;  // by MeshType
  std::unordered_map<std::string, ShaderProgram> shaders_;
  ShaderProgram* inScene_ = nullptr;  // in use, with this frame's camera; none after anything else was used
  std::string inSceneName_;
  std::unordered_map<std::string, Font> fonts_;
  std::vector<TextVertex> textVertices_;  // of the text being drawn; kept for its capacity
};

/// The process-wide renderer. It is never destroyed by itself: at process exit the context is gone.
Renderer& GetRenderer();
