#include "app/ScreenRegistry.hpp"
#include "tools/UnitConversionScreen.hpp"

namespace norvane {

void RegisterToolScreens(ScreenRegistry& registry) {
  registry.add(12, [] { return new UnitConversionScreen; });
}

}  // namespace norvane
