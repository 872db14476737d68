#include "graphics/shader_program.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <glm/gtc/type_ptr.hpp>
#include <sstream>
#include <string_view>
#include <system_error>
#include <utility>

#include "core/data_place.h"
#include "core/print.h"
#include "graphics/camera.h"

namespace {

constexpr char kFolder[] = "Graphics/GLSL/";
constexpr std::uintmax_t kMaxShaderBytes = std::uintmax_t{1024} * 1024;

// The layout of every mesh, whether or not a source repeats it.
constexpr std::array<std::pair<GLuint, const char*>, 5> kAttributes = {{
    {0, "position"},
    {1, "texCoord"},
    {2, "instancePosition"},
    {3, "instanceScale"},
    {4, "instanceColor"},
}};

constexpr std::string_view kEsHead =
    "#version 300 es\nprecision highp float;\nprecision highp int;\nprecision highp sampler2D;\n"
    "#define noperspective\n#line 1\n";

// The sources are written for desktop OpenGL. OpenGL ES wants a line of its own before everything else, and precisions,
// and knows no noperspective, which is for speed alone; messages keep the source's line numbers.
std::string ForEs(std::string source) {
  const std::size_t start = source.find("#version");
  if (start != std::string::npos) source.erase(start, std::min(source.find('\n', start), source.size()) - start);
  return std::string(kEsHead) + source;
}

// Compiles one stage; false with a message when it does not.
bool CompileStage(GLenum type, const std::string& fileName, GLuint& shader) {
  std::string source = ReadShaderFile(fileName);
  if (gl::IsEs() && !source.empty()) source = ForEs(std::move(source));
  shader = gl::CreateShader(type, source);
  std::string log;
  if (gl::Compiled(shader, log)) return true;
  Print("Loading Shader Error. %s\n", log.c_str());
  gl::DeleteShader(shader);
  return false;
}

void LocateUniforms(ShaderProgram& program) {
  const auto locate = [&](const char* uniform) { return gl::UniformLocation(program.name, uniform); };
  program.proj = locate("proj");
  program.view = locate("view");
  program.model = locate("model");
  program.spriteColor = locate("spriteColor");
  program.uvOffSet = locate("uvOffSet");
  program.frameTime = locate("frameTime");
  program.cPoint = locate("cPoint");
  program.gTime = locate("gTime");
}

void SendMatrix(GLint location, const glm::mat4& matrix, glm::mat4& held) {
  if (matrix == held) return;
  gl::UniformMatrix4(location, false, glm::value_ptr(matrix));
  held = matrix;
}

void SendVec4(GLint location, const ShaderProgram::Vec4& v, ShaderProgram::Vec4& held) {
  if (v == held) return;
  gl::Uniform4(location, v[0], v[1], v[2], v[3]);
  held = v;
}

}  // namespace

void ShaderProgram::SendCamera(const Camera& camera) {
  SendMatrix(proj, camera.GetProjection(), heldProj_);
  SendMatrix(view, camera.GetView(), heldView_);
}

void ShaderProgram::SendColour(const Vec4& rgba) { SendVec4(spriteColor, rgba, heldColour_); }
void ShaderProgram::SendTextureWindow(const Vec4& window) { SendVec4(uvOffSet, window, heldWindow_); }

std::string ReadShaderFile(const std::string& fileName) {
  const std::string path = FindData(kFolder + fileName);
  std::error_code error;
  std::ifstream file(path);
  if (!file || !std::filesystem::is_regular_file(path, error) ||
      std::filesystem::file_size(path, error) > kMaxShaderBytes) {
    Print("Could not open file %s\n", fileName.c_str());
    return {};
  }
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

ShaderProgram BuildProgram(const std::string& vertexFile, const std::string& fragmentFile) {
  ShaderProgram program;
  GLuint vertex = 0;
  GLuint fragment = 0;
  if (!CompileStage(GL_VERTEX_SHADER, vertexFile, vertex)) return program;
  if (!CompileStage(GL_FRAGMENT_SHADER, fragmentFile, fragment)) {
    gl::DeleteShader(vertex);
    return program;
  }
  program.name = gl::CreateProgram();
  gl::Attach(program.name, fragment);
  gl::Attach(program.name, vertex);
  for (const auto& [location, name] : kAttributes) gl::BindAttribute(program.name, location, name);
  gl::Link(program.name);
  std::string log;
  program.linked = gl::Linked(program.name, log);
  if (!program.linked) Print("Linking Shader Error. %s\n", log.c_str());
  gl::DeleteShader(vertex);
  gl::DeleteShader(fragment);
  if (program.linked) LocateUniforms(program);
  return program;
}
