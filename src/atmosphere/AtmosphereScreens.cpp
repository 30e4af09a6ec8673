#include "app/ScreenRegistry.hpp"

namespace norvane {

void RegisterAtmosphereScreens(ScreenRegistry& /*registry*/) {}

}  // namespace norvane
