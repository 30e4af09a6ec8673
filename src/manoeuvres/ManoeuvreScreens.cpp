#include "app/ScreenRegistry.hpp"
#include "manoeuvres/HoldingScreen.hpp"
#include "manoeuvres/RacetrackScreen.hpp"
#include "manoeuvres/TurnScreen.hpp"
#include "manoeuvres/WindScreen.hpp"

namespace norvane {

void RegisterManoeuvreScreens(ScreenRegistry& registry) {
  registry.add(5, [] { return new WindScreen; });
  registry.add(6, [] { return new TurnScreen; });
  registry.add(14, [] { return new RacetrackScreen; });
  registry.add(15, [] { return new HoldingScreen; });
}

}  // namespace norvane
