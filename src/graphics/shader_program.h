// One linked GLSL program, where its uniforms are, looked up once, and what the most of them hold.
#pragma once

#include <array>
#include <glm/mat4x4.hpp>
#include <string>

#include "graphics/gl.h"

class Camera;

struct ShaderProgram {
  using Vec4 = std::array<float, 4>;

  /// These send what differs from what the program holds; it must be the one in use.
  void SendCamera(const Camera& camera);
  void SendColour(const Vec4& rgba);
  void SendTextureWindow(const Vec4& window);

  GLuint name = 0;           ///< 0: nothing is drawn with it
  bool linked = false;       ///< one that did not link cannot be used
  bool looksInside = false;  ///< at nothing but its picture, so that this may stand among others in one texture
  GLint proj = -1;
  GLint view = -1;
  GLint model = -1;
  GLint spriteColor = -1;
  GLint uvOffSet = -1;
  GLint frameTime = -1;
  GLint cPoint = -1;
  GLint gTime = -1;

 private:
  // Linking leaves zeros.
  glm::mat4 heldProj_{0.0f};
  glm::mat4 heldView_{0.0f};
  Vec4 heldColour_{};
  Vec4 heldWindow_{};
};

/// Builds a program from two files in Graphics/GLSL/. What fails is printed: a stage that does not compile gives a
/// program without a GL name; one that does not link keeps its name.
ShaderProgram BuildProgram(const std::string& vertexFile, const std::string& fragmentFile);

/// The text of a file in Graphics/GLSL/; empty with a message when it cannot be read or is larger than 1 MiB.
std::string ReadShaderFile(const std::string& fileName);
