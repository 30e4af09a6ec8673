#include "app/ScreenRegistry.hpp"
#include "atmosphere/AtmosphereScreen.hpp"
#include "atmosphere/ChangeoverScreen.hpp"
#include "atmosphere/DensityAltitudeScreen.hpp"
#include "atmosphere/DescentScreen.hpp"
#include "atmosphere/SpeedScreen.hpp"
#include "atmosphere/StallSpeedScreen.hpp"

namespace norvane {

void RegisterAtmosphereScreens(ScreenRegistry& registry) {
  registry.add(0, [] { return new AtmosphereScreen; });
  registry.add(1, [] { return new SpeedScreen; });
  registry.add(2, [] { return new ChangeoverScreen; });
  registry.add(3, [] { return new DescentScreen; });
  registry.add(4, [] { return new DensityAltitudeScreen; });
  registry.add(13, [] { return new StallSpeedScreen; });
}

}  // namespace norvane
