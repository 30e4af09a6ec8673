#include "app/ScreenRegistry.hpp"
#include "weather/WeatherScreen.hpp"

namespace norvane {

void RegisterWeatherScreens(ScreenRegistry& registry) {
  registry.add(17, [] { return new WeatherScreen; });
}

}  // namespace norvane
