#pragma once
// Coefficient tables generated at build time from data/geomag/*.COF (see
// data/geomag/GenerateGeomagTables.cmake). Internal to GeoMag.cpp; use the Load* functions.

#include "navigation/GeoMag.hpp"

namespace norvane::geomag_tables {

extern const GaussCoefficients kWMM2005;
extern const GaussCoefficients kIGRF10;
extern const GaussCoefficients kWMM2025;
extern const GaussCoefficients kIGRF14;

}  // namespace norvane::geomag_tables
