#include "app/ScreenRegistry.hpp"
#include "navigation/IntersectionScreen.hpp"
#include "navigation/MagVarScreen.hpp"
#include "navigation/PointScreen.hpp"
#include "navigation/TracksScreen.hpp"
#include "waypoints/NavDBShell.hpp"

namespace norvane {

void RegisterNavigationScreens(ScreenRegistry& registry) {
  registry.add(7, [] { return new TracksScreen; });
  registry.add(8, [] { return new PointScreen; });
  registry.add(9, [] { return new IntersectionScreen; });
  registry.add(10, [] { return new MagVarScreen; });
  // The waypoint database these screens (and the sun screen) import from: its start-up check,
  // first-tick load and label in the menu.
  InstallNavDBHooks();
}

}  // namespace norvane
