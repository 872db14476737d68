// One linked GLSL program and where its uniforms are, looked up once.
#pragma once

#include <string>

#include "graphics/gl.h"

struct ShaderProgram {
  GLuint name = 0;
  bool linked = false;  ///< false: nothing is drawn with it
  GLint proj = -1;
  GLint view = -1;
  GLint model = -1;
  GLint spriteColor = -1;
  GLint uvOffSet = -1;
  GLint frameTime = -1;
  GLint cPoint = -1;
  GLint gTime = -1;
};

/// Builds a program from two files in Graphics/GLSL/. What fails is printed: a stage that does not compile gives a
/// program without a GL name; one that does not link keeps its name.
ShaderProgram BuildProgram(const std::string& vertexFile, const std::string& fragmentFile);

/// The text of a file in Graphics/GLSL/; empty with a message when it cannot be read or is larger than 1 MiB.
std::string ReadShaderFile(const std::string& fileName);
