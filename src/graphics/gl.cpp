#include "graphics/gl.h"

#include <array>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "core/print.h"

namespace gl {

namespace {

bool hasContext = false;
bool isEs = false;

// What the context stands at, as far as it was set here; a new context begins with these values.
struct State {
  bool blend = false;
  bool depthTest = false;
  bool blendsAlpha = false;
  GLuint program = 0;
  GLuint texture = 0;
  GLuint vertexArray = 0;
};
State state;

// Takes a new value; false when it stands already.
template <class T>
bool Change(T& standing, T value) {
  if (standing == value) return false;
  standing = value;
  return true;
}

std::array<float, 16> Transposed(const float* values) {
  std::array<float, 16> turned;
  for (std::size_t row = 0; row < 4; ++row)
    for (std::size_t column = 0; column < 4; ++column) turned[4 * column + row] = values[4 * row + column];
  return turned;
}

// The GL passes a buffer's byte offset as a pointer.
// NOLINTNEXTLINE(performance-no-int-to-ptr)
const void* Offset(std::size_t bytes) { return reinterpret_cast<const void*>(bytes); }

template <class GetLog>
std::string ReadLog(GLint length, GetLog getLog) {
  if (length <= 0) return {};
  std::vector<char> text(static_cast<std::size_t>(length) + 1, '\0');
  getLog(length, text.data());
  return text.data();
}

constexpr std::string_view kEsName = "OpenGL ES ";  // its versions begin with it; those of desktop OpenGL are numbers
constexpr int kDesktopGlsl = 330;
constexpr int kEsMajor = 3;

std::string ContextText(GLenum name) {
  const GLubyte* text = hasContext ? glGetString(name) : nullptr;
  return text == nullptr ? std::string{} : reinterpret_cast<const char*>(text);
}

// "4.50" and "1.40 and more words" become 450 and 140.
int GlslNumber(const std::string& text) {
  char* end = nullptr;
  const long major = std::strtol(text.c_str(), &end, 10);
  const long minor = *end == '.' ? std::strtol(end + 1, nullptr, 10) : 0;
  return static_cast<int>(100 * major + minor);
}

bool KnowsOurShaders(const std::string& version) {
  if (isEs) return std::atoi(version.c_str() + kEsName.size()) >= kEsMajor;
  return GlslNumber(ContextText(GL_SHADING_LANGUAGE_VERSION)) >= kDesktopGlsl;
}

}  // namespace

// GLEW asks for its entry points by name, through a library that serves contexts of GLX and EGL alike, and an ES
// context has all that are used here under the names of the desktop.
GlReport Load() {
  glewExperimental = GL_TRUE;
  const GLenum result = glewInit();
  hasContext = glCreateShader != nullptr && glGenFramebuffers != nullptr;
  state = State{};
  if (hasContext) glActiveTexture(GL_TEXTURE0);
  const std::string version = ContextText(GL_VERSION);
  isEs = version.starts_with(kEsName);
  GlReport report;
  // GLEW misses GLX, which a context of ES need not have.
  if (result != GLEW_OK && !isEs) report.error = reinterpret_cast<const char*>(glewGetErrorString(result));
  if (!hasContext) return report;
  report.canDraw = KnowsOurShaders(version);
  report.context = (isEs ? "" : "OpenGL ") + version + ", " + DriverName();
  return report;
}

bool HasContext() { return hasContext; }
bool IsEs() { return hasContext && isEs; }
void Unload() { hasContext = false; }

void SetEnabled(GLenum capability, bool enabled) {
  if (!hasContext) return;
  if (capability == GL_BLEND && !Change(state.blend, enabled)) return;
  if (capability == GL_DEPTH_TEST && !Change(state.depthTest, enabled)) return;
  enabled ? glEnable(capability) : glDisable(capability);
}

void BlendAlpha() {
  if (hasContext && Change(state.blendsAlpha, true)) glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
}

void Viewport(int x, int y, int width, int height) {
  if (hasContext) glViewport(x, y, width, height);
}

void ClearColor(float r, float g, float b, float a) {
  if (hasContext) glClearColor(r, g, b, a);
}

void Clear(GLbitfield buffers) {
  if (hasContext) glClear(buffers);
}

void Finish() {
  if (hasContext) glFinish();
}

void ReadWindow(int width, int height, void* rgba) {
  if (hasContext) glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, rgba);
}

std::string DriverName() { return ContextText(GL_RENDERER); }

GLuint GenTexture() {
  GLuint name = 0;
  if (hasContext) glGenTextures(1, &name);
  return name;
}

void DeleteTexture(GLuint texture) {
  if (!hasContext) return;
  glDeleteTextures(1, &texture);
  if (texture == state.texture) state.texture = 0;  // as the context does
}

void BindTexture(GLuint texture) {
  if (hasContext && Change(state.texture, texture)) glBindTexture(GL_TEXTURE_2D, texture);
}

void TexImage(GLint internalFormat, int width, int height, GLenum format, const void* pixels) {
  if (hasContext) glTexImage2D(GL_TEXTURE_2D, 0, internalFormat, width, height, 0, format, GL_UNSIGNED_BYTE, pixels);
}

void SetSmoothClamped() {
  if (!hasContext) return;
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
}

void GenerateMipmap() {
  if (hasContext) glGenerateMipmap(GL_TEXTURE_2D);
}

void TexImageAlpha(int width, int height, const void* pixels) {
  if (!hasContext) return;
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  TexImage(GL_ALPHA, width, height, GL_ALPHA, pixels);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
}

void AlphaSubImage(int x, int y, int width, int height, int pitch, const void* pixels) {
  if (!hasContext) return;
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  glPixelStorei(GL_UNPACK_ROW_LENGTH, pitch);
  glTexSubImage2D(GL_TEXTURE_2D, 0, x, y, width, height, GL_ALPHA, GL_UNSIGNED_BYTE, pixels);
  glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
}

void CopyIntoTexture(int x, int y, int fromX, int fromY, int width, int height) {
  if (hasContext) glCopyTexSubImage2D(GL_TEXTURE_2D, 0, x, y, fromX, fromY, width, height);
}

int MaxTextureSize() {
  GLint size = 0;
  if (hasContext) glGetIntegerv(GL_MAX_TEXTURE_SIZE, &size);
  return size;
}

GLuint CreateShader(GLenum type, const std::string& source) {
  if (!hasContext) return 0;
  const GLuint shader = glCreateShader(type);
  const char* text = source.c_str();
  glShaderSource(shader, 1, &text, nullptr);
  glCompileShader(shader);
  return shader;
}

bool Compiled(GLuint shader, std::string& log) {
  if (!hasContext) return true;
  GLint ok = GL_FALSE;
  GLint length = 0;
  glGetShaderiv(shader, GL_COMPILE_STATUS, &ok);
  glGetShaderiv(shader, GL_INFO_LOG_LENGTH, &length);
  log = ReadLog(length, [&](GLint size, char* text) { glGetShaderInfoLog(shader, size, nullptr, text); });
  return ok == GL_TRUE;
}

void DeleteShader(GLuint shader) {
  if (hasContext) glDeleteShader(shader);
}

GLuint CreateProgram() { return hasContext ? glCreateProgram() : 0; }

void Attach(GLuint program, GLuint shader) {
  if (hasContext) glAttachShader(program, shader);
}

void BindAttribute(GLuint program, GLuint location, const char* name) {
  if (hasContext) glBindAttribLocation(program, location, name);
}

void Link(GLuint program) {
  if (hasContext) glLinkProgram(program);
}

bool Linked(GLuint program, std::string& log) {
  if (!hasContext) return true;
  GLint ok = GL_FALSE;
  GLint length = 0;
  glGetProgramiv(program, GL_LINK_STATUS, &ok);
  glGetProgramiv(program, GL_INFO_LOG_LENGTH, &length);
  log = ReadLog(length, [&](GLint size, char* text) { glGetProgramInfoLog(program, size, nullptr, text); });
  return ok == GL_TRUE;
}

void DeleteProgram(GLuint program) {
  if (!hasContext) return;
  if (program == state.program) UseProgram(0);  // one in use would not be deleted yet
  glDeleteProgram(program);
}

void UseProgram(GLuint program) {
  if (hasContext && Change(state.program, program)) glUseProgram(program);
}

GLint UniformLocation(GLuint program, const char* name) {
  return hasContext ? glGetUniformLocation(program, name) : -1;
}

void Uniform(GLint location, float value) {
  if (hasContext) glUniform1f(location, value);
}

void Uniform3(GLint location, const float* values) {
  if (hasContext) glUniform3fv(location, 1, values);
}

void Uniform4(GLint location, float x, float y, float z, float w) {
  if (hasContext) glUniform4f(location, x, y, z, w);
}

// Transposed here: told to do it, Mesa goes through the elements one by one instead of copying them.
void UniformMatrix4(GLint location, bool transpose, const float* values) {
  if (!hasContext) return;
  if (!transpose) {
    glUniformMatrix4fv(location, 1, GL_FALSE, values);
    return;
  }
  const std::array<float, 16> columns = Transposed(values);
  glUniformMatrix4fv(location, 1, GL_FALSE, columns.data());
}

GLuint GenVertexArray(std::initializer_list<GLuint*> buffers) {
  GLuint array = 0;
  if (!hasContext) return array;
  glGenVertexArrays(1, &array);
  bool whole = array != 0;
  for (GLuint* buffer : buffers) {
    *buffer = 0;
    glGenBuffers(1, buffer);
    whole = whole && *buffer != 0;
  }
  if (whole) return array;
  Print("OpenGL has no more vertex arrays or buffers\n");
  DeleteVertexArray(array);
  for (GLuint* buffer : buffers) {
    DeleteBuffer(*buffer);
    *buffer = 0;
  }
  return 0;
}

void DeleteVertexArray(GLuint array) {
  if (!hasContext) return;
  glDeleteVertexArrays(1, &array);
  if (array == state.vertexArray) state.vertexArray = 0;  // as the context does
}

void BindVertexArray(GLuint array) {
  if (hasContext && Change(state.vertexArray, array)) glBindVertexArray(array);
}

void DeleteBuffer(GLuint buffer) {
  if (hasContext) glDeleteBuffers(1, &buffer);
}

void StaticData(GLenum target, GLuint buffer, std::size_t bytes, const void* data) {
  if (!hasContext) return;
  glBindBuffer(target, buffer);
  glBufferData(target, static_cast<GLsizeiptr>(bytes), data, GL_STATIC_DRAW);
}

void ArrayData(GLuint buffer, std::size_t bytes, const void* data, GLenum usage) {
  if (!hasContext) return;
  glBindBuffer(GL_ARRAY_BUFFER, buffer);
  glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(bytes), data, usage);
}

void BindArrayBuffer(GLuint buffer) {
  if (hasContext) glBindBuffer(GL_ARRAY_BUFFER, buffer);
}

void FloatAttribute(GLuint location, int components, int stride, std::size_t offset) {
  if (!hasContext) return;
  glEnableVertexAttribArray(location);
  glVertexAttribPointer(location, components, GL_FLOAT, GL_FALSE, stride, Offset(offset));
}

void PerInstance(GLuint location) {
  if (hasContext) glVertexAttribDivisor(location, 1);
}

// Without an array a driver would read where none of ours points.
static bool CanDraw() { return hasContext && state.vertexArray != 0; }

void DrawArrays(GLenum mode, int count) {
  if (CanDraw()) glDrawArrays(mode, 0, count);
}

void DrawIndexedTriangles(int count) {
  if (CanDraw()) glDrawElements(GL_TRIANGLES, count, GL_UNSIGNED_SHORT, nullptr);
}

void DrawIndexedInstances(int count, int instances) {
  if (CanDraw()) glDrawElementsInstanced(GL_TRIANGLES, count, GL_UNSIGNED_SHORT, nullptr, instances);
}

GLuint GenFramebuffer() {
  GLuint name = 0;
  if (hasContext) glGenFramebuffers(1, &name);
  return name;
}

void DeleteFramebuffer(GLuint framebuffer) {
  if (hasContext) glDeleteFramebuffers(1, &framebuffer);
}

void BindFramebuffer(GLuint framebuffer) {
  if (hasContext) glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
}

GLuint GenRenderbuffer() {
  GLuint name = 0;
  if (hasContext) glGenRenderbuffers(1, &name);
  return name;
}

void DeleteRenderbuffer(GLuint renderbuffer) {
  if (hasContext) glDeleteRenderbuffers(1, &renderbuffer);
}

void AttachColour(GLuint texture) {
  if (hasContext) glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
}

void AttachDepthStencil(GLuint renderbuffer, int width, int height) {
  if (!hasContext) return;
  glBindRenderbuffer(GL_RENDERBUFFER, renderbuffer);
  glRenderbufferStorage(GL_RENDERBUFFER, GL_DEPTH24_STENCIL8, width, height);
  glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_STENCIL_ATTACHMENT, GL_RENDERBUFFER, renderbuffer);
}

GLenum FramebufferStatus() { return hasContext ? glCheckFramebufferStatus(GL_FRAMEBUFFER) : GL_FRAMEBUFFER_COMPLETE; }

}  // namespace gl
