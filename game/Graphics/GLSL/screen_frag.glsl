#version 330
// Full-screen pictures and the plain screen pass: a copy.
in vec2 uv;
uniform sampler2D scene;
out vec4 colour;

void main() {
  colour = texture(scene, uv);
}
