// The online parts of the desktop program: the data links screen and the update.
#include "app/AboutDialog.hpp"
#include "app/AppContext.hpp"
#include "app/ScreenRegistry.hpp"
#include "online/LinksScreen.hpp"
#include "online/SelfUpdate.hpp"
#include "online/UpdateUi.hpp"

namespace norvane {

void RegisterOnlineScreens(ScreenRegistry& registry) {
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
