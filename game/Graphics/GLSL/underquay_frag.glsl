#version 330
// Sprites of what swims or drifts: a picture, tinted, that passes under the quay round the basin.
in vec2 uv;
in vec2 place;
uniform sampler2D picture;
uniform vec4 spriteColor;
out vec4 colour;

const vec2 kBasin = vec2(15.0, 10.0);  // world units from the middle to the quay
const float kShade = 0.7;              // world units that lie in the quay's shadow

void main() {
  vec2 inside = kBasin - abs(place);
  float depth = min(inside.x, inside.y);
  if (depth < 0.0) discard;
  colour = texture(picture, uv) * spriteColor;
  colour.rgb *= mix(0.6, 1.0, clamp(depth / kShade, 0.0, 1.0));
}
