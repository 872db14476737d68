#version 330
// Full-screen pictures and the plain screen pass: a copy, in which painted sea whirls slowly round the picture's middle.
// Both passes of a full-screen picture come through here, so each does half.
noperspective in vec2 uv;
uniform sampler2D scene;
uniform float frameTime;  // seconds of 60 frames that the screen has been shown
out vec4 colour;

const float kStart = 0.25;             // seconds; the program's first picture does not wait for this
const vec2 kEye = vec2(0.5, 0.42);     // of the whirl
const vec2 kAspect = vec2(1.78, 1.9);  // seen at a slant
const float kDrift = 0.006;            // picture heights

// How much a colour is that of painted water: light, and greenish blue.
float Sea(vec3 c) {
  float cold = min(c.g, c.b) - c.r;
  float even = 1.0 - abs(c.g - c.b) * 6.0;
  return clamp(cold * 6.0 - 0.4, 0.0, 1.0) * clamp(even, 0.0, 1.0) * step(0.5, c.g);
}

void main() {
  colour = texture(scene, uv);
  if (frameTime < kStart) return;
  vec2 away = (uv - kEye) * kAspect;
  float reach = max(length(away), 1e-3);
  vec2 way = away / reach;
  float turn = reach * 14.0 + frameTime * 1.6;  // three arms that run inwards
  vec2 arm = vec2(cos(turn), sin(turn));
  vec2 thrice = vec2(way.x * (way.x * way.x - 3.0 * way.y * way.y), way.y * (3.0 * way.x * way.x - way.y * way.y));
  float crest = dot(thrice, arm);
  vec4 moved = texture(scene, uv + vec2(-way.y, way.x) * crest * kDrift);
  // An outline must not leave a ghost beside it.
  float calm = 1.0 - smoothstep(0.03, 0.12, distance(colour.rgb, moved.rgb));
  float sea = min(Sea(colour.rgb), Sea(moved.rgb)) * calm;
  colour = mix(colour, moved, sea);
  colour.rgb += crest * 0.018 * sea;
}
