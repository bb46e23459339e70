// From the mean place of the date to the apparent place: nutation, then
// annual aberration (with or without the E-terms), and back.
#pragma once

#include "astro/instant.h"

// `add` 1 goes from mean to true, 0 back. Near the poles it goes through
// the ecliptic.
void NutationApply(const Instant* instant, double* ra, double* dec, int add);

// The Sun's true longitude and the orbit's eccentricity, as the aberration
// needs them, from `tDyn`.
void SolarLongitudeForAberration(const Instant* instant, double* longitude, double* eccentricity);

// `add` non-zero takes the aberration in, 0 takes it out. Nothing happens
// within one arc minute of a celestial pole.
void AberrationApply(const Instant* instant, double* ra, double* dec, int withETerms, int add);

void MeanToApparent(const Instant* instant, double* ra, double* dec, int withETerms);
void ApparentToMean(const Instant* instant, double* ra, double* dec, int withETerms);
