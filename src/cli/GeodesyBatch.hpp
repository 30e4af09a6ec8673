#pragma once
// Batch inverse and direct problems: one problem per line of an input stream, one answer per
// line of the output stream, in constant memory whatever the input size.

#include <cstdio>

namespace norvane::cli {

enum class InverseMethod { Wgs84, Sphere, Rhumb };
enum class DirectMethod { Wgs84, Sphere };

// Lines "LAT1 LON1 LAT2 LON2" (decimal degrees, blanks or a comma between) become lines
// "DIST_NM TRK_INI TRK_FIN" at full precision (shortest round-trip decimal), "ND" where
// undefined; the rhumb line's single track fills both track columns. A line that cannot be read
// becomes "error: line N: ..." and the run goes on. Returns the number of such lines.
long RunInverseBatch(std::FILE* in, std::FILE* out, InverseMethod method);

// Lines "LAT LON TRACK DIST_NM" become lines "LAT2 LON2"; otherwise as RunInverseBatch.
long RunDirectBatch(std::FILE* in, std::FILE* out, DirectMethod method);

}  // namespace norvane::cli
