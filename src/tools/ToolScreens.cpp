#include "app/ScreenRegistry.hpp"

namespace norvane {

void RegisterToolScreens(ScreenRegistry& /*registry*/) {}

}  // namespace norvane
