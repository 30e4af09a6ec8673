# The Qt-free calculators and the command-line calculators on them: one list shared by the desktop
# build (src/) and the web build (web/), so that both compile the same files. Paths are relative to
# the repository root; NorvaneSources(VAR LIST) gives them as absolute paths.
set(NORVANE_CALCULATOR_SOURCES
  src/app/Angles.cpp
  src/app/InputRules.cpp
  src/app/NumberChars.cpp
  src/app/Quantity.cpp
  src/app/TextFormat.cpp
  src/atmosphere/StandardAtmosphere.cpp
  src/atmosphere/AtmosphereCalculations.cpp
  src/atmosphere/Descent.cpp
  src/navigation/Geodesy.cpp
  src/navigation/GeoMag.cpp
  src/navigation/NavCalculations.cpp
  src/manoeuvres/Holding.cpp
  src/manoeuvres/Racetrack.cpp
  src/manoeuvres/Turn.cpp
  src/manoeuvres/Wind.cpp
  src/sun/SunTimes.cpp
  src/tools/UnitConversion.cpp
  src/tools/TinyCalculator.cpp
  src/tools/FlightComputer.cpp
  src/weather/MetarDecoder.cpp
  src/weather/MetarJson.cpp
  src/weather/MetarText.cpp
  src/online/ServerText.cpp
)
# norvane-cli's parser and its calculator commands (not the waypoint database nor the network ones).
set(NORVANE_CLI_CALCULATOR_SOURCES
  src/cli/main.cpp
  src/cli/CliSupport.cpp
  src/cli/Catalogue.cpp
  src/cli/AtmosphereCommands.cpp
  src/cli/NavigationCommands.cpp
  src/cli/NavScreenCommands.cpp
  src/cli/GeodesyBatch.cpp
  src/cli/ManoeuvreCommands.cpp
  src/cli/SunCommands.cpp
  src/cli/ToolCommands.cpp
  src/cli/TsdCommand.cpp
  src/cli/MetarCommand.cpp
)

function(NorvaneSources var)
  set(root ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/..)
  cmake_path(NORMAL_PATH root)
  list(TRANSFORM ARGN PREPEND ${root})
  set(${var} ${ARGN} PARENT_SCOPE)
endfunction()
