#include "online/NetTexts.hpp"

namespace norvane {

std::string NetErrorText(int code) {
  switch (code) {
    case kNetNoConnection:
      return "No Internet connection";
    case kNetNoSession:
      return "Unable to open an Internet connection";
    case kNetInvalidUrl:
      return "Invalid URL";
    case kNetReadError:
      return "Read data error";
    default:
      return {};
  }
}

}  // namespace norvane
