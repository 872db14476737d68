#version 330
// Highlighted buttons: the picture bulges in the middle and stays whole at its edge.
in vec2 uv;
uniform sampler2D picture;
flat in vec4 tint;
out vec4 colour;

const float kBulge = 0.18;  // share by which the middle is enlarged

void main() {
  vec2 fromMiddle = uv - vec2(0.5);
  float edge = clamp(dot(fromMiddle, fromMiddle) * 4.0, 0.0, 1.0);
  vec2 at = vec2(0.5) + fromMiddle * (1.0 - kBulge * (1.0 - edge));
  colour = texture(picture, at) * tint;
}
