#pragma once
// Texts between the atmosphere screens and the core: results and box defaults use the locale's
// decimal separator, as the input boxes do (the core formats with ".").

#include <QString>
#include <string>

#include "app/AppContext.hpp"
#include "app/UiHelpers.hpp"

namespace norvane {

inline QString ShownText(const std::string& s) { return LocaleText(s); }

// A number written as "1013.25" in code, typed into a box as the user would type it.
inline QString BoxText(const char* s) { return ShownText(s); }

}  // namespace norvane
