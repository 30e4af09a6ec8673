#include "app/ScreenRegistry.hpp"

namespace norvane {

void RegisterManoeuvreScreens(ScreenRegistry& /*registry*/) {}

}  // namespace norvane
