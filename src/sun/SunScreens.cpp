#include "app/ScreenRegistry.hpp"
#include "sun/SunScreen.hpp"

namespace norvane {

void RegisterSunScreens(ScreenRegistry& registry) {
  registry.add(11, [] { return new SunScreen; });
}

}  // namespace norvane
