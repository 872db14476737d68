// Trigonometry for whatever decides how a match goes. Made of operations that every machine rounds alike, so that the
// same match gives the same bits everywhere; the functions of C libraries differ in the last one. The nearest float but
// for one angle in millions.
#pragma once

/// Angles in radians. Not a number for what is not finite.
float Sin(float angle);
float Cos(float angle);
float Tan(float angle);
/// The angle of (x, y) from the x axis, from -pi to pi, with the signs of zeros and infinities as std::atan2 has them.
float Atan2(float y, float x);
