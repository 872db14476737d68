#version 330
// Particles: the picture, tinted. A picture four times as wide as high is a strip of the four players' bodies: what is
// new is the body, what fades is the tail of its flight, a drop that shrinks.
in vec2 uv;
flat in vec4 tint;
uniform sampler2D picture;
out vec4 colour;

const float kInk = 0.86;     // grey of the picture that takes the whole tint; above it goes to white
const float kMantle = 0.51;  // its radius, of half the picture's

float bodyOf(vec3 c) { return c.b > 0.5 ? (c.r > 0.5 ? 1.0 : 2.0) : (c.g > 0.5 ? 3.0 : 0.0); }

vec4 body() {
  vec4 texel = texture(picture, vec2((uv.x + bodyOf(tint.rgb)) / 4.0, uv.y));
  float shine = clamp((texel.g - kInk) / (1.0 - kInk), 0.0, 1.0);
  return vec4(mix(tint.rgb * min(texel.rgb / kInk, 1.0), vec3(1.0), shine), texel.a);
}

vec4 tail() {
  float edge = length(2.0 * uv - 1.0) / (kMantle * (0.3 + 0.7 * tint.a));
  return vec4(tint.rgb, 0.5 * tint.a * (1.0 - smoothstep(0.6, 1.0, edge)));
}

void main() {
  ivec2 size = textureSize(picture, 0);
  if (size.x != 4 * size.y)
    colour = texture(picture, uv) * tint;
  else
    colour = tint.a > 0.999 ? body() : tail();
}
