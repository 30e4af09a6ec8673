#include "app/AppContext.hpp"

namespace norvane {

AppContext& App() {
  static AppContext ctx;
  return ctx;
}

ShellHooks& Hooks() {
  static ShellHooks hooks;
  return hooks;
}

}  // namespace norvane
