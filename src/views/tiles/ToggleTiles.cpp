#include "views/tiles/ToggleTiles.h"

#include <QCoreApplication>
#include <QStringList>

#include "views/tiles/TileCanvas.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kRadius = 16.5;
constexpr double kPitch = 37.3;
constexpr double kSymbol = 18;

QString symbolOf(Toggle toggle) {
  switch (toggle) {
    case Toggle::WiFi:
      return u"wifi"_s;
    case Toggle::Bluetooth:
      return u"bluetooth"_s;
    case Toggle::DarkMode:
      return u"moon"_s;
    case Toggle::DoNotDisturb:
      return u"bell.slash"_s;
    case Toggle::Mute:
      return u"speaker.slash"_s;
    case Toggle::KeepAwake:
      return u"cup.and.saucer"_s;
  }
  return u"square"_s;
}

QString nameOf(Toggle toggle) {
  switch (toggle) {
    case Toggle::WiFi:
      return QCoreApplication::translate("Tiles", "Wi-Fi");
    case Toggle::Bluetooth:
      return QCoreApplication::translate("Tiles", "Bluetooth");
    case Toggle::DarkMode:
      return QCoreApplication::translate("Tiles", "Dark Mode");
    case Toggle::DoNotDisturb:
      return QCoreApplication::translate("Tiles", "Do Not Disturb");
    case Toggle::Mute:
      return QCoreApplication::translate("Tiles", "Mute");
    case Toggle::KeepAwake:
      return QCoreApplication::translate("Tiles", "Keep Awake");
  }
  return {};
}

QPointF centreOf(qsizetype index, qsizetype count, double width) {
  const double first = (width - kPitch * static_cast<double>(count - 1)) / 2;
  return {first + kPitch * static_cast<double>(index), theme::kTileMiddle};
}

}  // namespace

TogglesContent makeToggles(const TileRequest& request) {
  TogglesContent content;
  for (const Toggle toggle : {Toggle::WiFi, Toggle::DarkMode, Toggle::DoNotDisturb, Toggle::KeepAwake}) {
    const auto state = request.sources.toggles.constFind(toggle);
    const bool known = state != request.sources.toggles.constEnd();
    content.marks.append({toggle, known && state->on, known && state->capability.available});
  }
  return content;
}

TileText describe(const TogglesContent& content, const QString& name) {
  QStringList on;
  for (const ToggleMark& mark : content.marks)
    if (mark.on) on.append(nameOf(mark.toggle));
  return {name, on.join(u", "_s)};
}

void paint(TileCanvas& canvas, const TogglesContent& content) {
  QPainter& painter = canvas.painter();
  for (qsizetype i = 0; i < content.marks.size(); ++i) {
    const ToggleMark& mark = content.marks[i];
    const QPointF centre = centreOf(i, content.marks.size(), canvas.width());
    painter.save();
    if (!mark.available) painter.setOpacity(painter.opacity() * theme::kDisabledOpacity);
    painter.setPen(Qt::NoPen);
    painter.setBrush(mark.on ? canvas.accent() : canvas.colors().toggleOff);
    painter.drawEllipse(centre, kRadius, kRadius);
    canvas.symbol(symbolOf(mark.toggle), centre, kSymbol,
                  mark.on ? canvas.colors().inkOnAccent : canvas.colors().primary);
    painter.restore();
  }
}

std::optional<int> partAt(const TogglesContent& content, double width, QPointF point) {
  for (qsizetype i = 0; i < content.marks.size(); ++i) {
    const QPointF away = point - centreOf(i, content.marks.size(), width);
    if (content.marks[i].available && QPointF::dotProduct(away, away) <= kRadius * kRadius)
      return static_cast<int>(content.marks[i].toggle);
  }
  return std::nullopt;
}

}  // namespace tarnwick
