#include "manoeuvres/Holding.hpp"

#include "app/Angles.hpp"
#include "app/TextFormat.hpp"

namespace norvane {

EntrySectors ComputeEntrySectors(int outbound, bool rightHand) {
  const int o = static_cast<int>(Norm360(outbound));
  // The 70-degree line through the fix, on the holding side for a right-hand pattern.
  const int a = static_cast<int>(Norm360(rightHand ? o - 70 : o + 70));
  const int b = static_cast<int>(Norm360(a + 180));
  EntrySectors l{};
  l[0] = static_cast<int16_t>(rightHand ? b : a);
  l[3] = static_cast<int16_t>(rightHand ? a : b);
  l[1] = l[3];
  l[2] = static_cast<int16_t>(o);
  l[4] = static_cast<int16_t>(o);
  l[5] = l[0];
  return l;
}

std::array<bool, 3> MarkEntrySector(int track, const EntrySectors& limits) {
  std::array<bool, 3> marks{};
  for (int i = 0; i < 3; ++i) {
    const int lo = limits[i], hi = limits[i + 3];
    if (hi <= lo)
      marks[i] = (track <= hi && track < 180) || (track >= lo && track > 180);
    else
      marks[i] = lo <= track && track <= hi;
  }
  return marks;
}

std::array<std::string, 3> EntryRowNames(bool rightHand) {
  if (rightHand) return {"Direct", "Teardrop", "Parallel"};
  return {"Direct", "Parallel", "Teardrop"};
}

std::string EntryLimitsText(const EntrySectors& limits, int sector) {
  return FormatMask(limits[sector], "000") + " -> " + FormatMask(limits[sector + 3], "000");
}

std::string EntryNamesText(const std::array<bool, 3>& marks, bool rightHand) {
  const auto names = EntryRowNames(rightHand);
  std::string out;
  for (int i = 0; i < 3; ++i) {
    if (!marks[i]) continue;
    if (!out.empty()) out += " and ";
    out += names[i];
  }
  return out;
}

}  // namespace norvane
