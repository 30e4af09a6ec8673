#pragma once
// Batch inverse and direct problems: one problem per line of an input stream, one answer per
// line of the output stream, in constant memory whatever the input size.

#include <cstdio>
#include <string>
#include <string_view>

namespace norvane::cli {

enum class InverseMethod { Wgs84, Sphere, Rhumb };
enum class DirectMethod { Wgs84, Sphere };

// Lines "LAT1 LON1 LAT2 LON2" (decimal degrees, blanks or a comma between; latitudes -90 to 90,
// longitudes -540 to 540 reduced to -180..180, so 0 to 360 included) become lines
// "DIST_NM TRK_INI TRK_FIN" at full precision (shortest round-trip decimal), "ND" where
// undefined; the rhumb line's single track fills both track columns. A line that cannot be read
// becomes "error: line N: ..." and the run goes on. Returns the number of such lines; throws
// OutputError when `out` cannot take the answers.
long RunInverseBatch(std::FILE* in, std::FILE* out, InverseMethod method);

// Lines "LAT LON TRACK DIST_NM" become lines "LAT2 LON2"; otherwise as RunInverseBatch.
long RunDirectBatch(std::FILE* in, std::FILE* out, DirectMethod method);

// One input line of either batch: exactly n finite numbers, each with an optional sign, separated
// by blanks or by one comma (blanks allowed around it). On failure returns false and sets `why`
// to "expected " + layout (with ", found more" for extra text).
bool ParseBatchFields(std::string_view line, double* out, int n, const char* layout, std::string& why);

}  // namespace norvane::cli
