#include "windows/WindowReservation.h"

#include <QLocale>
#include <cmath>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kHundredths = 100;
constexpr double kMostSeconds = 1e11;  ///< Beyond the year 5000 nobody counts.

/// The record as its file has it: the date in seconds since 2001.
struct StoredReservation {
  int pid = 0;
  double launch = 0;
  quint32 number = 0;
  QRectF original;
  QRectF adjusted;

  static constexpr auto fields() {
    using S = StoredReservation;
    return std::tuple(field::required("pid", &S::pid), field::required("launch", &S::launch),
                      field::required("number", &S::number), field::required("original", &S::original),
                      field::required("adjusted", &S::adjusted));
  }
};

}  // namespace

QString WindowReservation::key() const {
  QString seconds = QString::number(static_cast<double>(launch) / kHundredths, 'f', QLocale::FloatingPointShortest);
  if (!seconds.contains(u'.')) seconds += ".0"_L1;
  return u"%1:%2:%3"_s.arg(pid).arg(seconds).arg(number);
}

bool WindowReservation::near(const QRectF& a, const QRectF& b) {
  const auto isNear = [](double one, double other) { return std::abs(one - other) < kNear; };
  return isNear(a.x(), b.x()) && isNear(a.y(), b.y()) && isNear(a.width(), b.width()) && isNear(a.height(), b.height());
}

QRectF JsonCodec<QRectF>::decode(const QJsonValue& value, const JsonPath& path) {
  const auto pairs = JsonCodec<QList<QList<double>>>::decode(value, path);
  if (pairs.size() != 2 || pairs[0].size() != 2 || pairs[1].size() != 2) failKind(path, JsonKind::Array);
  return {pairs[0][0], pairs[0][1], pairs[1][0], pairs[1][1]};
}

QJsonValue JsonCodec<QRectF>::encode(const QRectF& value, const JsonPath& path) {
  const QList<QList<double>> pairs{{value.x(), value.y()}, {value.width(), value.height()}};
  return JsonCodec<QList<QList<double>>>::encode(pairs, path);
}

WindowReservation JsonCodec<WindowReservation>::decode(const QJsonValue& value, const JsonPath& path) {
  const auto stored = JsonCodec<StoredReservation>::decode(value, path);
  if (std::abs(stored.launch) > kMostSeconds) failKind(JsonPath(path, "launch"), JsonKind::Number);
  const auto launch = std::llround(stored.launch * kHundredths) + WindowReservation::kReferenceDate * 100;
  return {stored.pid, launch, stored.number, stored.original, stored.adjusted};
}

QJsonValue JsonCodec<WindowReservation>::encode(const WindowReservation& value, const JsonPath& path) {
  const double launch = static_cast<double>(value.launch - WindowReservation::kReferenceDate * 100) / kHundredths;
  return JsonCodec<StoredReservation>::encode({value.pid, launch, value.number, value.original, value.adjusted}, path);
}

}  // namespace tarnwick
