#include "app/ScreenRegistry.hpp"

namespace norvane {

void RegisterNavigationScreens(ScreenRegistry& /*registry*/) {}

}  // namespace norvane
