#include "app/ScreenRegistry.hpp"

namespace norvane {

void RegisterSunScreens(ScreenRegistry& /*registry*/) {}

}  // namespace norvane
