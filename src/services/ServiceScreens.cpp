#include "app/ScreenRegistry.hpp"

namespace norvane {

void RegisterServiceScreens(ScreenRegistry& /*registry*/) {}

}  // namespace norvane
