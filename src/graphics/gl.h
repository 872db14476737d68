// The only way to OpenGL. Without a context every call has no effect: generators give 0, status queries report
// success, and nothing crashes, so the floors above need not know whether anybody can see them.
//
// The state below is remembered, and what stands already is not sent again: whoever reaches OpenGL past this page must
// leave capabilities, blending, program, texture and vertex array as they were.
#pragma once

#include <GL/glew.h>

#include <string>

#include "core/gl_window.h"

namespace gl {

/// Loads the entry points of the current context, which is desktop OpenGL or OpenGL ES. Later calls do something only
/// if they are really there, which GLEW's own result, the report's error, does not tell on every display system.
GlReport Load();
/// Whether calls reach a context.
bool HasContext();
/// Whether that is one of OpenGL ES, whose shaders begin with another line.
bool IsEs();
/// From now on calls have no effect; before the context goes.
void Unload();

// --- state ---
void SetEnabled(GLenum capability, bool enabled);
/// Source alpha over what is there.
void BlendAlpha();
void Viewport(int x, int y, int width, int height);
void ClearColor(float r, float g, float b, float a);
void Clear(GLbitfield buffers);
/// Waits until all that was drawn stands.
void Finish();
/// Copies the lower left part of the window, that large, to `rgba`: 4 bytes a pixel, the bottom row first.
void ReadWindow(int width, int height, void* rgba);
/// What draws, as the driver calls itself; empty without a context.
std::string DriverName();

// --- textures ---
GLuint GenTexture();
void DeleteTexture(GLuint texture);
void BindTexture(GLuint texture);
/// 8-bit image for the bound texture; `pixels` may be null for an empty one.
void TexImage(GLint internalFormat, int width, int height, GLenum format, const void* pixels);
/// Clamped at the edges, filtered linearly.
void SetSmoothClamped();
/// Makes the smaller levels of the bound texture.
void GenerateMipmap();
/// Image of alpha values alone for the bound texture; its rows are not padded.
void TexImageAlpha(int width, int height, const void* pixels);
/// Fills a rectangle of such an image; rows of `pixels` are `pitch` bytes apart.
void AlphaSubImage(int x, int y, int width, int height, int pitch, const void* pixels);
/// Copies a rectangle of the bound framebuffer's colour, from (fromX, fromY) on, into the bound texture at (x, y).
void CopyIntoTexture(int x, int y, int fromX, int fromY, int width, int height);
int MaxTextureSize();

// --- programs ---
GLuint CreateShader(GLenum type, const std::string& source);
bool Compiled(GLuint shader, std::string& log);
void DeleteShader(GLuint shader);
GLuint CreateProgram();
void Attach(GLuint program, GLuint shader);
void BindAttribute(GLuint program, GLuint location, const char* name);
void Link(GLuint program);
bool Linked(GLuint program, std::string& log);
void DeleteProgram(GLuint program);
void UseProgram(GLuint program);
GLint UniformLocation(GLuint program, const char* name);
void Uniform(GLint location, float value);
void Uniform3(GLint location, const float* values);
void Uniform4(GLint location, float x, float y, float z, float w);
void UniformMatrix4(GLint location, bool transpose, const float* values);

// --- meshes ---
GLuint GenVertexArray();
void DeleteVertexArray(GLuint array);
void BindVertexArray(GLuint array);
GLuint GenBuffer();
void DeleteBuffer(GLuint buffer);
/// Binds the buffer to the target and fills it for good.
void StaticData(GLenum target, GLuint buffer, std::size_t bytes, const void* data);
/// Binds the buffer to GL_ARRAY_BUFFER and fills it anew; `usage` is GL_DYNAMIC_DRAW or GL_STREAM_DRAW.
void ArrayData(GLuint buffer, std::size_t bytes, const void* data, GLenum usage);
void BindArrayBuffer(GLuint buffer);
/// `components` floats of the bound array buffer, `stride` and `offset` in bytes.
void FloatAttribute(GLuint location, int components, int stride, std::size_t offset);
/// The attribute advances once an instance, not once a vertex.
void PerInstance(GLuint location);
void DrawArrays(GLenum mode, int count);
/// 16-bit indices of the bound vertex array.
void DrawIndexedTriangles(int count);
void DrawIndexedInstances(int count, int instances);

// --- targets ---
GLuint GenFramebuffer();
void DeleteFramebuffer(GLuint framebuffer);
void BindFramebuffer(GLuint framebuffer);
GLuint GenRenderbuffer();
void DeleteRenderbuffer(GLuint renderbuffer);
void AttachColour(GLuint texture);
/// Depth and stencil storage of that size for the bound framebuffer.
void AttachDepthStencil(GLuint renderbuffer, int width, int height);
GLenum FramebufferStatus();

}  // namespace gl
