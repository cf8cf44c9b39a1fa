#include "platform/kwin/KWinWindowFrames.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QJsonArray>
#include <QtEndian>
#include <cmath>

#include "platform/linux/ProcessLaunch.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct KWinWindowFramesWords {
  Q_DECLARE_TR_FUNCTIONS(KWinWindowFrames)
};

/// No display is so far away, and no window so large.
constexpr double kMostPoints = 100'000;

/// Absent for anything but four numbers.
std::optional<QRectF> rectangle(const QJsonValue& value) {
  const QJsonArray numbers = value.toArray();
  if (numbers.size() != 4) return std::nullopt;
  const auto number = [&numbers](int at) { return numbers[at].toDouble(); };
  return QRectF(number(0), number(1), number(2), number(3));
}

bool isPossible(const QRectF& frame) {
  const auto fits = [](double value) { return std::abs(value) < kMostPoints; };
  return fits(frame.x()) && fits(frame.y()) && fits(frame.width()) && fits(frame.height()) && !frame.isEmpty();
}

bool isNear(const QRectF& a, const QRectF& b) {
  const auto near = [](double one, double other) { return std::abs(one - other) < 2; };
  return near(a.x(), b.x()) && near(a.y(), b.y()) && near(a.width(), b.width()) && near(a.height(), b.height());
}

}  // namespace

Capability KWinWindowFrames::capability() {
  if (KWinScript::isOffered()) return Capability::yes();
  return Capability::no(
      KWinWindowFramesWords::tr("KWin does not take scripts here, so loose windows stay where they are."));
}

quint32 KWinWindowFrames::numberOf(const QString& id) {
  const QByteArray start = QByteArray::number(processStart(script_.compositor()).value_or(0));
  const QByteArray digest = QCryptographicHash::hash(id.toUtf8() + ' ' + start, QCryptographicHash::Sha256);
  return std::max<quint32>(1, qFromBigEndian<quint32>(digest.constData()));
}

std::optional<QList<WindowFrames::Window>> KWinWindowFrames::all(std::chrono::milliseconds patience) {
  const auto answer = script_.ask({}, patience);
  if (!answer || !answer->isArray()) return std::nullopt;
  known_.clear();
  QList<Window> windows;
  for (const QJsonValue& each : answer->toArray()) {
    const auto is = [&each](QLatin1StringView what) { return each[what].toBool(); };
    const auto frame = rectangle(each["frame"_L1]);
    if (!frame) continue;
    const QString id = each["id"_L1].toString();
    const quint32 number = numberOf(id);
    windows.append({number, each["pid"_L1].toInt(), *frame, is("active"_L1), is("minimised"_L1), is("kept"_L1),
                    is("fullscreen"_L1), table_ ? table_->before(id) : QRectF()});
    const QJsonArray least = each["least"_L1].toArray();
    known_.insert(number,
                  {id, *frame, QSizeF(least[0].toDouble(), least[1].toDouble()), is("moves"_L1), is("resizes"_L1)});
  }
  return windows;
}

const KWinWindowFrames::Known* KWinWindowFrames::known(quint32 number, std::chrono::milliseconds patience) {
  if (!known_.contains(number)) all(patience);
  const auto found = known_.constFind(number);
  return found == known_.cend() ? nullptr : &*found;
}

std::optional<QRectF> KWinWindowFrames::frame(quint32 number, std::chrono::milliseconds patience) {
  const Known* const window = known(number, patience);
  const auto answer = window ? script_.ask({{u"id"_s, window->id}}, patience) : std::nullopt;
  return answer ? rectangle(*answer) : std::nullopt;
}

QRectF KWinWindowFrames::accepted(quint32 number, const QRectF& wanted) {
  const auto window = known_.constFind(number);
  if (window == known_.cend() || !window->moves) return {};
  if (wanted.size() == window->frame.size()) return wanted;
  const bool isTooSmall = wanted.width() < window->least.width() || wanted.height() < window->least.height();
  return window->resizes && !isTooSmall ? wanted : QRectF();
}

bool KWinWindowFrames::setFrame(quint32 number, const QRectF& frame, std::chrono::milliseconds patience) {
  const Known* const window = isPossible(frame) ? known(number, patience) : nullptr;
  if (!window) return false;
  const QJsonObject order{{u"id"_s, window->id},
                          {u"frame"_s, QJsonArray{frame.x(), frame.y(), frame.width(), frame.height()}},
                          {u"patience"_s, static_cast<int>(patience.count())}};
  const auto answer = script_.ask(order, patience);
  const auto there = answer ? rectangle(*answer) : std::nullopt;
  return there && isNear(*there, frame);
}

}  // namespace tarnwick
