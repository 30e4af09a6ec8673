#include "app/ScreenRegistry.hpp"

namespace norvane {

void RegisterNetworkServices(ScreenRegistry& registry);  // NetworkScreens.cpp: 17, 18, update hooks

void RegisterServiceScreens(ScreenRegistry& registry) { RegisterNetworkServices(registry); }

}  // namespace norvane
