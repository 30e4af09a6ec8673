#pragma once
// Error codes of the internet access layer and the words the screens show for them.

#include <cstdint>
#include <string>

namespace norvane {

// Result codes of ReadUrl. 5 is not produced by the layer: the weather screen uses it for a
// reply that is not a station file of the current year.
enum NetCode : int16_t {
  kNetOk = 0,
  kNetNoConnection = 1,  // the system reports no Internet connection
  kNetNoSession = 2,     // no Internet session could be opened
  kNetInvalidUrl = 3,    // the address could not be opened
  kNetReadError = 4,     // reading failed, stalled or exceeded the caller's size limit
  kNetNoWeatherData = 5,
};

// "No Internet connection", "Unable to open an Internet connection", "Invalid URL",
// "Read data error" for codes 1 to 4; "" for any other code.
std::string NetErrorText(int code);

}  // namespace norvane
