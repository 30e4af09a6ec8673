#include "cli/TimeZone.hpp"

#include <QDateTime>
#include <QTimeZone>

namespace norvane::cli {

std::optional<int> ZoneOffsetMinutes(const std::string& zone, int year, int month, int day) {
  const QByteArray id = QByteArray::fromStdString(zone);
  if (!QTimeZone::isTimeZoneIdAvailable(id)) return std::nullopt;
  const QDateTime noon(QDate(year, month, day), QTime(12, 0), QTimeZone::utc());
  return QTimeZone(id).offsetFromUtc(noon) / 60;
}

}  // namespace norvane::cli
