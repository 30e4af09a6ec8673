// libFuzzer target: the database builder's readers (OurAirports CSV, X-Plane text) on arbitrary
// text. Whatever they accept must serialise into a file that the reader loads.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "waypoints/NavDBBuilder.hpp"

using namespace norvane;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  NavDBBuilder builder;
  (void)builder.AddText(std::string_view(reinterpret_cast<const char*>(data), size), "fuzz.csv");
  const auto records = builder.Build();
  if (records.empty()) return 0;
  NavDatabase db;
  if (!db.LoadNavDBFromBytes(SerializeNavDB(records, 1))) std::abort();
  return 0;
}
