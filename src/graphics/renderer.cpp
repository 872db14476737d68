#include "graphics/renderer.h"

#include <algorithm>

#include "core/platform.h"
#include "core/print.h"
#include "core/transform.h"
#include "graphics/camera.h"
#include "graphics/mesh_type.h"

namespace {

// The only program that is known to look at nothing but its sprite's window; one of a level's own may look anywhere.
constexpr std::string_view kLooksInside = "default";

}  // namespace

Renderer& GetRenderer() {
  static Renderer& renderer = *new Renderer;
  return renderer;
}

void Renderer::Init() {
  gl::SetEnabled(GL_DEPTH_TEST, true);
  fontLibrary_ = OpenFontLibrary();
  if (fontLibrary_ == nullptr) Print("Could not init freetype library\n");
  CreateProgram("default", "dvert.glsl", "dfrag.glsl");
  CreateProgram("debug", "dvert.glsl", "debug_frag.glsl");
  CreateProgram("screen", "screen_vert.glsl", "screen_frag.glsl");
  CreateProgram("wave", "screen_vert.glsl", "wave_frag.glsl");
  CreateProgram("text", "dtext_vert.glsl", "dtext_frag.glsl");
  CreateProgram("fisheye", "dvert.glsl", "fisheye.glsl");
  CreateProgram("particles", "dparticle_vert.glsl", "dparticle_frag.glsl");
  meshes_ = {BuildQuad(0.5f), BuildCircle(), BuildSquareOutline(), BuildQuad(1.0f)};
  FitWindow();
  screen_.shader = "screen";
}

void Renderer::Shutdown() {
  for (const auto& [name, program] : shaders_) gl::DeleteProgram(program.name);
  for (const auto& [name, texture] : textures_) gl::DeleteTexture(texture.name);
  sheet_.Delete();
  for (Mesh& mesh : meshes_) DeleteMesh(mesh);
  for (auto& [name, font] : fonts_) FreeFont(font);
  DeleteSceneTarget();
  CloseFontLibrary(fontLibrary_);
  *this = Renderer{};
}

void Renderer::CreateProgram(const std::string& name, const std::string& vertexFile, const std::string& fragmentFile) {
  const ShaderProgram program = BuildProgram(vertexFile, fragmentFile);
  if (program.name != 0) {
    gl::DeleteProgram(GetShader(name).name);  // of an earlier start; 0 is none
    shaders_[name] = program;
    shaders_[name].looksInside = name == kLooksInside;
  }
  inScene_ = nullptr;
}

ShaderProgram& Renderer::GetShader(const std::string& name) {
  static ShaderProgram none;
  const auto found = shaders_.find(name);
  return found == shaders_.end() ? none : found->second;
}

void Renderer::LoadTexture(const std::string& name) {
  Texture& texture = textures_[name];
  if (texture.name != 0) {
    std::erase(newTextures_, name);
    gl::DeleteTexture(texture.name);
  }
  texture = LoadTextureFile(name);
  if (texture.name == 0)
    Print("Error Loading Texture%s\n", name.c_str());
  else if (gl::HasContext())
    newTextures_.push_back(name);
}

// Not while a picture is loaded: the program's first picture would wait for them, on a software driver longer than for
// anything else, and the linear filter reads none.
void Renderer::FinishNewTextures() {
  if (newTextures_.empty()) return;
  std::stable_sort(newTextures_.begin(), newTextures_.end(), [this](const std::string& a, const std::string& b) {
    return textures_[a].height > textures_[b].height;
  });
  for (const std::string& name : newTextures_) {
    Texture& texture = textures_[name];
    gl::BindTexture(texture.name);
    gl::GenerateMipmap();
    sheet_.Add(texture);
  }
  gl::BindTexture(0);
  newTextures_.clear();
}

const Texture& Renderer::FindTexture(const std::string& name) const {
  static const Texture none;
  const auto found = textures_.find(name);
  return found == textures_.end() ? none : found->second;
}

void Renderer::FitWindow() {
  const WindowRect window = GetPlatform().GetWindowRect();
  if (window.width <= 0 || window.height <= 0) return;
  const Viewport seen = FitViewport(window.width, window.height);
  if (seen.width <= 0 || seen.height <= 0) return;
  if (!ownSize_) FitTarget(window.width, window.height);
  if (Camera* camera = GetMainCamera())
    camera->SetPerspective(camera->GetFov(), static_cast<float>(seen.width) / static_cast<float>(seen.height),
                           camera->GetNear(), camera->GetFar());
}

void Renderer::FitPicture(int width, int height) {
  if (width <= 0 || height <= 0) return;
  ownSize_ = true;
  FitTarget(width, height);
}

void Renderer::FitTarget(int width, int height) {
  const Viewport fitted = FitViewport(width, height);
  if (fitted.width <= 0 || fitted.height <= 0) return;
  viewport_ = fitted;
  gl::Viewport(viewport_.x, viewport_.y, viewport_.width, viewport_.height);
  if (width != targetWidth_ || height != targetHeight_) CreateSceneTarget(width, height);
}

void Renderer::CreateSceneTarget(int width, int height) {
  if (gl::HasContext() && (width > gl::MaxTextureSize() || height > gl::MaxTextureSize())) {
    ReportFramebufferStatus();
    return;
  }
  DeleteSceneTarget();
  targetWidth_ = width;
  targetHeight_ = height;
  sceneFramebuffer_ = gl::GenFramebuffer();
  sceneDepthStencil_ = gl::GenRenderbuffer();
  sceneTexture_ = gl::GenTexture();
  gl::BindFramebuffer(sceneFramebuffer_);
  gl::BindTexture(sceneTexture_);
  gl::TexImage(GL_RGB, targetWidth_, targetHeight_, GL_RGB, nullptr);
  gl::SetSmoothClamped();
  gl::AttachColour(sceneTexture_);
  gl::AttachDepthStencil(sceneDepthStencil_, targetWidth_, targetHeight_);
  ReportFramebufferStatus();
  gl::BindFramebuffer(0);
}

void Renderer::DeleteSceneTarget() {
  if (sceneFramebuffer_ == 0) return;
  gl::DeleteFramebuffer(sceneFramebuffer_);
  gl::DeleteRenderbuffer(sceneDepthStencil_);
  gl::DeleteTexture(sceneTexture_);
}

void Renderer::ReportFramebufferStatus() const {
  const char* text = "No Idea";
  switch (gl::FramebufferStatus()) {
    case GL_FRAMEBUFFER_COMPLETE:
      text = "GL_FRAMEBUFFER_COMPLETE";
      break;
    case GL_FRAMEBUFFER_UNDEFINED:
      text = "GL_FRAMEBUFFER_UNDEFINED";
      break;
    case GL_FRAMEBUFFER_INCOMPLETE_ATTACHMENT:
      text = "GL_FRAMEBUFFER_INCOMPLETE_ATTACHMENT";
      break;
    case GL_FRAMEBUFFER_INCOMPLETE_MISSING_ATTACHMENT:
      text = "GL_FRAMEBUFFER_INCOMPLETE_MISSING_ATTACHMENT";
      break;
    case GL_FRAMEBUFFER_INCOMPLETE_DRAW_BUFFER:
      text = "GL_FRAMEBUFFER_INCOMPLETE_DRAW_BUFFER";
      break;
    case GL_FRAMEBUFFER_INCOMPLETE_READ_BUFFER:
      text = "GL_FRAMEBUFFER_INCOMPLETE_READ_BUFFER";
      break;
    case GL_FRAMEBUFFER_UNSUPPORTED:
      text = "GL_FRAMEBUFFER_UNSUPPORTED";
      break;
    case GL_FRAMEBUFFER_INCOMPLETE_MULTISAMPLE:
      text = "GL_FRAMEBUFFER_INCOMPLETE_MULTISAMPLE";
      break;
    case GL_FRAMEBUFFER_INCOMPLETE_LAYER_TARGETS:
      text = "GL_FRAMEBUFFER_INCOMPLETE_LAYER_TARGETS";
      break;
    default:
      break;
  }
  Print("%s\n", text);
}

// The scene fills its target, and only the screen pass keeps the window's bars: a letterbox in both would squeeze
// twice.
void Renderer::BeginScene() {
  if (!IsDrawing()) return;
  inScene_ = nullptr;
  if (shown_) FinishNewTextures();
  gl::BindFramebuffer(sceneFramebuffer_);
  gl::Viewport(0, 0, targetWidth_, targetHeight_);
  // Depth and stencil share their words: clearing both is a plain fill, clearing one reads and masks each, which on a
  // software driver costs a twelfth of a frame.
  gl::Clear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
}

ShaderProgram* Renderer::UseInScene(const std::string& shaderName) {
  gl::SetEnabled(GL_BLEND, true);
  gl::BlendAlpha();
  // One after another draws with the same program, and the camera stands still within a frame.
  if (inScene_ != nullptr && shaderName == inSceneName_) return inScene_;
  const Camera* camera = GetMainCamera();
  ShaderProgram& program = GetShader(shaderName);
  if (!program.linked || camera == nullptr) return nullptr;
  gl::UseProgram(program.name);
  program.SendCamera(*camera);
  inScene_ = &program;
  inSceneName_ = shaderName;
  return inScene_;
}

void Renderer::ComposeScreen(bool clocksRun) {
  const float frameTime = screen_.time;
  if (clocksRun) {
    screen_.time += kClockStep;
    screen_.waveTime += kClockStep;
  }
  gl::SetEnabled(GL_DEPTH_TEST, false);  // on in the first frame alone, seen or not
  if (!IsDrawing()) return;
  inScene_ = nullptr;
  shown_ = true;
  gl::BindFramebuffer(0);
  gl::Viewport(viewport_.x, viewport_.y, viewport_.width, viewport_.height);
  gl::ClearColor(0.0f, 0.0f, 0.0f, 1.0f);
  gl::Clear(GL_COLOR_BUFFER_BIT);
  const ShaderProgram& program = GetShader(screen_.shader);
  gl::SetEnabled(GL_BLEND, false);
  // With program 0 a compatibility context would draw a white quad; the cleared window stays instead.
  if (!program.linked) return;
  gl::UseProgram(program.name);
  gl::Uniform(program.frameTime, frameTime);
  gl::Uniform3(program.cPoint, &screen_.wavePoint.x);
  gl::Uniform(program.gTime, screen_.waveTime);
  gl::BindVertexArray(meshes_[MeshType::kFullScreen].vertexArray);
  gl::BindTexture(sceneTexture_);
  gl::DrawIndexedTriangles(kQuadIndices);
}

void Renderer::StartRipple(const Vec3& point) {
  screen_.shader = "wave";
  screen_.wavePoint = point;
  screen_.waveTime = 0.0f;
}
