#include "app/ScreenRegistry.hpp"
#include "tools/FlightComputerScreen.hpp"
#include "tools/TinyCalculatorScreen.hpp"
#include "tools/UnitConversionScreen.hpp"

namespace norvane {

void RegisterToolScreens(ScreenRegistry& registry) {
  registry.add(12, [] { return new UnitConversionScreen; });
  registry.add(16, [] { return new TinyCalculatorScreen; });
  registry.add(20, [] { return new FlightComputerScreen; });
}

}  // namespace norvane
