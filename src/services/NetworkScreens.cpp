// The network services of the desktop program: airport weather, data links and the update.
#include "app/AboutDialog.hpp"
#include "app/AppContext.hpp"
#include "app/ScreenRegistry.hpp"
#include "services/LinksScreen.hpp"
#include "services/SelfUpdate.hpp"
#include "services/UpdateUi.hpp"
#include "services/WeatherScreen.hpp"

namespace norvane {

void RegisterNetworkServices(ScreenRegistry& registry) {
  registry.add(17, [] { return new WeatherScreen; });
  registry.add(18, [] { return new LinksScreen; });

  ShellHooks& h = Hooks();
  h.afterSettingsRead = [] {
    if (CanReplaceExecutable(RunningExecutablePath())) RemoveUpdateBackup(RunningExecutablePath());
  };
  h.firstTickUpdateCheck = FirstTickUpdateCheck;
  h.decorateAbout = [](QWidget* about) {
    if (auto* box = qobject_cast<AboutDialog*>(about)) DecorateAboutBox(box);
  };
  h.runUpdate = RunUpdateDialog;
}

}  // namespace norvane
