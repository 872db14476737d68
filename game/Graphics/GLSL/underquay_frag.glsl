#version 330
// Sprites of what comes from the sides: a picture, tinted, that passes under the quay there.
in vec2 uv;
in vec3 place;
uniform sampler2D picture;
flat in vec4 tint;
out vec4 colour;

const float kBasin = 15.0;  // world units from the middle to the quay
const float kShade = 0.7;   // world units that lie in the quay's shadow

void main() {
  float depth = kBasin - abs(place.x);
  if (depth < 0.0) discard;
  colour = texture(picture, uv) * tint;
  colour.rgb *= mix(0.6, 1.0, clamp(depth / kShade, 0.0, 1.0));
}
