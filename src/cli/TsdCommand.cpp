// norvane-cli tsd: the "Time, speed, distance and fuel" screen.
#include <CLI/CLI.hpp>

#include <memory>
#include <string>

#include "cli/Catalogue.hpp"
#include "cli/CliSupport.hpp"
#include "cli/Commands.hpp"
#include "tools/FlightComputer.hpp"

namespace norvane::cli {
namespace {

constexpr const char* kKeys[kTsdResultCount] = {
    "ground_speed",   "time",      "time_hours",      "distance",         "fuel_used_volume",
    "fuel_used_mass", "endurance", "endurance_hours", "usable_endurance", "usable_endurance_hours",
};

struct TsdArgs {
  std::string gs, time, distance, fuelFlow, fuelOnBoard, reserve;
  std::string fuel = "avgas";
  bool us = false, mass = false;
};

}  // namespace

void RegisterTsdCommand(CLI::App& app) {
  auto args = std::make_shared<TsdArgs>();
  CLI::App* cmd = app.add_subcommand(
      "tsd",
      "Time, speed, distance and fuel: two of ground speed, time and distance give the third; the fuel "
      "flow gives the fuel used, with the fuel on board the endurance, and less the reserve the usable "
      "endurance.\nPrints ground_speed time time_hours distance, then fuel_used_volume fuel_used_mass "
      "with --fuel-flow, then endurance endurance_hours usable_endurance usable_endurance_hours with "
      "--fuel-on-board; fuel in L and kg, or US gal and lb with --us.\nA trip time beyond the usable "
      "endurance adds \"message: Trip time exceeds the usable endurance\" (exit status 1). With --raw "
      "the h:mm times are in minutes.");
  Describer d(cmd, {kKeys, kKeys + kTsdResultCount});
  d.entry().results.push_back("message");
  const std::string two = "(give two of --gs, --time and --distance)";
  CLI::Option* gs = d.number("--gs", args->gs, kTsdGroundSpeed, false, two)->type_name("KT");
  CLI::Option* time =
      d.number("--time", args->time, kTsdTime, false, "in decimal hours, 1.5 for 1:30 " + two)->type_name("HOURS");
  CLI::Option* distance = d.number("--distance", args->distance, kTsdDistance, false, two)->type_name("NM");
  const auto usVolume = static_cast<size_t>(FuelUnit::UsGallon);
  CLI::Option* flow = d.number("--fuel-flow", args->fuelFlow, kTsdFuelFlow[0], false,
                               "(kg/h with --mass, lb/h with --us --mass)", kTsdFuelFlow[usVolume])
                          ->type_name("PER_HOUR");
  CLI::Option* onBoard = d.number("--fuel-on-board", args->fuelOnBoard, kTsdFuelOnBoard[0], false,
                                  "(kg with --mass, lb with --us --mass; needs --fuel-flow)", kTsdFuelOnBoard[usVolume])
                             ->type_name("FUEL");
  CLI::Option* reserve =
      d.number("--reserve", args->reserve, kTsdReserve, false, "(needs --fuel-on-board)")->type_name("MIN");
  onBoard->needs(flow);
  reserve->needs(onBoard);
  d.choice("--fuel", args->fuel, {"avgas", "jeta1"}, "Fuel, for its density: avgas or jeta1; default avgas")
      ->type_name("FUEL_TYPE");
  d.flag("--us", args->us, "US units: fuel in US gal (or lb with --mass) instead of L (or kg)");
  d.flag("--mass", args->mass, "Fuel flow and fuel on board by mass (kg or lb) instead of volume");
  cmd->callback([args, gs, time, distance, flow, onBoard, reserve] {
    if (gs->count() + time->count() + distance->count() != 2)
      throw UsageError("exactly two of --gs, --time and --distance are required (the third is found)");
    TsdInput in;
    in.find = !gs->count() ? TsdFind::GroundSpeed : !time->count() ? TsdFind::Time : TsdFind::Distance;
    if (gs->count()) in.groundSpeed = ReadQuantity("--gs", args->gs, kTsdGroundSpeed);
    if (time->count()) in.hours = ReadQuantity("--time", args->time, kTsdTime);
    if (distance->count()) in.distance = ReadQuantity("--distance", args->distance, kTsdDistance);
    in.unit = FuelUnitOf(args->us, args->mass);
    in.fuel = args->fuel == "jeta1" ? FuelType::JetA1 : FuelType::Avgas;
    const auto u = static_cast<size_t>(in.unit);
    if (flow->count()) in.fuelFlow = ReadQuantity("--fuel-flow", args->fuelFlow, kTsdFuelFlow[u]);
    if (onBoard->count()) in.fuelOnBoard = ReadQuantity("--fuel-on-board", args->fuelOnBoard, kTsdFuelOnBoard[u]);
    if (reserve->count()) in.reserveMinutes = ReadQuantity("--reserve", args->reserve, kTsdReserve);

    const TsdTexts t = ComputeTsdTexts(in);
    ResultPrinter out;
    for (int r = 0; r < kTsdResultCount; ++r)
      if (!t.text[size_t(r)].empty()) out.Add(kKeys[r], t.text[size_t(r)], t.value[size_t(r)]);
    if (!t.message.empty()) out.Fail(t.message);
    ExitStatus() = out.Print();
  });
}

}  // namespace norvane::cli
