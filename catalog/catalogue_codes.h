// The number codes the reference catalogue records share: scaled angles,
// proper motions, magnitudes, parallaxes and the spectral code of `stars`.
// Each has its decoder for the readers and its encoder for the tools that
// write catalogue files.
#pragma once

#include <cstdint>
#include <string>

// A scaled angle v means v x 2 pi / 2147483647 radians. The writer rounds
// half away from zero.
double scaledAngleToRadians(int32_t v);
int32_t radiansToScaledAngle(double radians);

// Proper motion: 21 unsigned bits, (code x 0.00001 - 7.5) arc seconds a
// year. The encoder clamps to the code's range.
inline constexpr uint32_t kProperMotionZero = 750000;
double properMotionFromCode(uint32_t code);
uint32_t properMotionCode(double arcsecPerYear);

// The 11-bit magnitude code: code x 0.01 - 1.6; all ones is unknown, 99.9.
inline constexpr uint32_t kMagnitudeUnknownCode = 0x7FF;
double starMagnitudeFromCode(uint32_t code);
uint32_t starMagnitudeCode(double magnitude);  // 99.9 or beyond the range: unknown

// Colour and the like in thousandths; 32767 is unknown (99.9).
double thousandthsValue(int16_t v);
int16_t thousandthsCode(double value);

// Parallax code, 18 bits: (code x 0.01 - 920) x 0.001 arc seconds.
double parallaxFromCode(uint32_t code);
uint32_t parallaxCode(double arcsec);

// The spectral text of a `stars` spectral code: the class letter, the
// subclass, and the luminosity class for rows 1 to 4 only ("V" is never
// printed: dwarfs stay unmarked).
std::string spectralText(uint16_t code);
