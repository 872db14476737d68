#version 330
// Text: the tint where there is ink, and round it a rim of paper on which it reads over anything. The lower half of the
// atlas's alpha is the rim's coverage, the upper half the ink's.
in vec2 uv;
uniform sampler2D atlas;
flat in vec4 tint;
out vec4 colour;

const vec3 kPaper = vec3(0.969, 0.945, 0.890);

void main() {
  float twice = 2.0 * texture(atlas, uv).a;
  colour = vec4(mix(kPaper, tint.rgb, max(twice - 1.0, 0.0)), tint.a * min(twice, 1.0));
}
