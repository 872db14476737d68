// OpenGL ES 3.0 as the browser has it, in GLEW's place: its entry points are linked, so there is nothing to load.
#pragma once

#include <GLES3/gl3.h>

// Answers of desktop OpenGL alone, for which the game has names.
#define GL_FRAMEBUFFER_INCOMPLETE_DRAW_BUFFER 0x8CDB
#define GL_FRAMEBUFFER_INCOMPLETE_READ_BUFFER 0x8CDC
#define GL_FRAMEBUFFER_INCOMPLETE_LAYER_TARGETS 0x8DA8

inline constexpr GLenum GLEW_OK = 0;
inline GLboolean glewExperimental = GL_FALSE;

inline GLenum glewInit() { return GLEW_OK; }
inline const GLubyte* glewGetErrorString(GLenum) { return reinterpret_cast<const GLubyte*>(""); }
