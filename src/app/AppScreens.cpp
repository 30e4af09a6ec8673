#include "app/OptionsScreen.hpp"
#include "app/ScreenRegistry.hpp"

namespace norvane {

void RegisterAppScreens(ScreenRegistry& registry) {
  registry.add(19, [] { return new OptionsScreen; });
}

void RegisterAllScreens(ScreenRegistry& registry) {
  RegisterAtmosphereScreens(registry);
  RegisterManoeuvreScreens(registry);
  RegisterNavigationScreens(registry);
  RegisterSunScreens(registry);
  RegisterToolScreens(registry);
  RegisterWeatherScreens(registry);
  RegisterOnlineScreens(registry);
  RegisterAppScreens(registry);
}

}  // namespace norvane
