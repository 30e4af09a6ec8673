#include "online/UpdateInfo.hpp"

namespace norvane {

namespace {
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
}  // namespace

int16_t OwnVersionNumber() { return static_cast<int16_t>(NORVANE_VERSION_MAJOR * 100 + NORVANE_VERSION_MINOR); }

int16_t ParseVersionText(std::string_view text) {
  if (text.size() != 4 || !IsDigit(text[0]) || !IsDigit(text[2]) || !IsDigit(text[3])) return 0;
  return static_cast<int16_t>((text[0] - '0') * 100 + (text[2] - '0') * 10 + (text[3] - '0'));
}

std::string VersionText(int16_t version) {
  const int v = version < 0 ? 0 : version;
  std::string minor = std::to_string(v % 100);
  if (minor.size() < 2) minor.insert(0, 1, '0');
  return std::to_string(v / 100) + "." + minor;
}

ServerVersionVerdict JudgeServerVersion(int16_t server, int16_t own) {
  if (server < 1) return ServerVersionVerdict::NoData;
  return server > own ? ServerVersionVerdict::NewVersion : ServerVersionVerdict::NoUpdate;
}

bool AutoUpdateCheckDue(int16_t autoUpdateCheck, std::string_view previousDate, std::string_view today,
                        bool connected) {
  return autoUpdateCheck == 1 && previousDate != today && connected;
}

const char* VerdictText(ServerVersionVerdict verdict) {
  switch (verdict) {
    case ServerVersionVerdict::NoData:
      return update_text::kNoData;
    case ServerVersionVerdict::NoUpdate:
      return update_text::kNoUpdate;
    case ServerVersionVerdict::NewVersion:
      return update_text::kAvailable;
  }
  return update_text::kNoData;
}

std::string UpdateQuestionText(int16_t version) {
  return "A new Norvane version (" + VersionText(version) + ") is available\r\nWould you like to update it now ?";
}

}  // namespace norvane
