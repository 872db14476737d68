#version 330
// Text: the tint where the atlas has ink, and round it a rim of paper on which it reads over anything.
in vec2 uv;
uniform sampler2D atlas;
uniform vec4 spriteColor;
out vec4 colour;

const vec3 kPaper = vec3(0.969, 0.945, 0.890);
const float kRim = 4.5;  // pixels of the atlas
const int kSteps = 16;

float ink(vec2 at) { return texture(atlas, at).a; }

void main() {
  vec2 pixel = 1.0 / vec2(textureSize(atlas, 0));
  float rim = ink(uv);
  for (int i = 0; i < kSteps; ++i) {
    float angle = 6.2831853 * float(i) / float(kSteps);
    vec2 way = vec2(cos(angle), sin(angle)) * pixel;
    rim = max(rim, max(ink(uv + kRim * way), ink(uv + 0.55 * kRim * way)));
  }
  colour = vec4(mix(kPaper, spriteColor.rgb, ink(uv)), spriteColor.a * rim);
}
