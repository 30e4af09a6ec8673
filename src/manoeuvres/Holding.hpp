#pragma once
// Holding-pattern entry sectors (ICAO Doc 8168, Vol I: direct, teardrop and parallel entries,
// bounded by the line 70 degrees off the inbound track through the fix and by the inbound track).

#include <array>
#include <cstdint>
#include <string>

#include "manoeuvres/ManoeuvreInputs.hpp"

namespace norvane {

inline constexpr Quantity kHoldingOutbound = WholeDegrees("Holding outbound course");
inline constexpr Quantity kHoldingTrack = WholeDegrees("Fix inbound track");

// Six whole-degree limits L(0)..L(5); sector i runs clockwise from L(i) to L(i + 3).
// Sector 0 is the direct entry (180 degrees wide); for a right-hand pattern sector 1 is the
// teardrop (70 degrees) and sector 2 the parallel entry (110 degrees), for a left-hand pattern
// the reverse. Limits are tracks to the fix.
using EntrySectors = std::array<int16_t, 6>;

// `outbound` is the holding outbound course, 0 to 360 (360 is taken as 0).
EntrySectors ComputeEntrySectors(int outbound, bool rightHand);

// Which sectors contain the track to the fix `track`. Both ends are inclusive, so a track on a
// limit marks both neighbours. In a sector that passes through north (hi <= lo) the test is
// split at the fixed bound 180: x <= hi and x < 180, or x >= lo and x > 180; a track of exactly
// 180 is therefore never counted in such a sector.
std::array<bool, 3> MarkEntrySector(int track, const EntrySectors& limits);

// Row names top to bottom: "Direct", then "Teardrop", "Parallel" (right-hand) or
// "Parallel", "Teardrop" (left-hand).
std::array<std::string, 3> EntryRowNames(bool rightHand);

// "290 -> 110": L(i) and L(i + 3) through the mask "000".
std::string EntryLimitsText(const EntrySectors& limits, int sector);

// The marked sectors' names in row order, joined by " and ": "Direct and Teardrop".
std::string EntryNamesText(const std::array<bool, 3>& marks, bool rightHand);

}  // namespace norvane
