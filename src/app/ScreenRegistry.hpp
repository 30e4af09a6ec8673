#pragma once
// Which screen each menu item opens. Each domain registers its screens in
// Register<Domain>Screens(); an item without a registered screen opens nothing.

#include <QString>
#include <functional>
#include <map>

class QWidget;

namespace norvane {

class CalculatorScreen;

class ScreenRegistry {
 public:
  using Factory = std::function<CalculatorScreen*()>;
  void add(int menuIndex, Factory factory) { factories_[menuIndex] = std::move(factory); }
  bool has(int menuIndex) const { return factories_.count(menuIndex) != 0; }
  CalculatorScreen* create(int menuIndex) const {
    const auto it = factories_.find(menuIndex);
    return it == factories_.end() ? nullptr : it->second();
  }
  const std::map<int, Factory>& all() const { return factories_; }

 private:
  std::map<int, Factory> factories_;
};

// Fills the registry with every screen of this build.
void RegisterAllScreens(ScreenRegistry& registry);

void RegisterAppScreens(ScreenRegistry& registry);         // Options (19)
void RegisterAtmosphereScreens(ScreenRegistry& registry);  // 0, 1, 2, 3, 4, 13
void RegisterNavigationScreens(ScreenRegistry& registry);  // 7, 8, 9, 10
void RegisterManoeuvreScreens(ScreenRegistry& registry);   // 5, 6, 15
void RegisterSunScreens(ScreenRegistry& registry);         // 11
void RegisterToolScreens(ScreenRegistry& registry);        // 12, 16, 20
void RegisterWeatherScreens(ScreenRegistry& registry);     // 17
void RegisterOnlineScreens(ScreenRegistry& registry);      // 18, update hooks

}  // namespace norvane
