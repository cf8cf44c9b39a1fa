#include "DockFixture.h"

#include <QCoreApplication>
#include <QDir>
#include <QKeyEvent>
#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "views/theme/Theme.h"

namespace tarnwick::testing {

using namespace Qt::StringLiterals;

DockWidget widget(const QString& kind) { return {QUuid::createUuid(), kind, {}, {}}; }

DockRow starterRow() {
  DockRow row;
  for (const auto& kind : {u"applications"_s, u"digitalClock"_s, u"analogClassicLight"_s, u"weatherCurrent"_s, u"cpu"_s,
                           u"ram"_s, u"systemQuickToggles"_s})
    row.widgets.append(widget(kind));
  return row;
}

TileSources morning() {
  TileSources sources;
  sources.now = QDateTime(QDate(2026, 11, 24), QTime(10, 24, 36));
  sources.locale = QLocale(QLocale::English, QLocale::UnitedKingdom);
  MetricsSnapshot metrics;
  metrics.cpu = 23;
  metrics.memory = 61;
  sources.metrics = metrics;
  RemoteReading weather;
  weather.value.value = u"6°"_s;
  weather.value.subtitle = u"Partly cloudy"_s;
  weather.value.symbol = u"cloud.sun.fill"_s;
  weather.value.weather.emplace().city = u"Kendal"_s;
  sources.weather.setExample(weather);
  sources.toggles = {{Toggle::WiFi, {true, Capability::yes()}},
                     {Toggle::DarkMode, {true, Capability::yes()}},
                     {Toggle::DoNotDisturb, {false, Capability::yes()}},
                     {Toggle::KeepAwake, {false, Capability::yes()}}};
  return sources;
}

QList<DockApp> runningApps() {
  return {{1, u"Browser"_s, u"#3F9E9A #226B70"_s, true}, {2, u"Files"_s, u"#6E8FBB #46638F"_s, false},
          {3, u"Editor"_s, u"#7C72C8 #4A4299"_s, false}, {4, u"Terminal"_s, u"#474C57 #23272F"_s, false},
          {5, u"Mail"_s, u"#6488E6 #3F5BB5"_s, false},   {6, u"Music"_s, u"#D9788F #9A405C"_s, false}};
}

QPixmap icon(const DockApp& app, int size, double ratio) {
  QPixmap picture(static_cast<int>(std::lround(size * ratio)), static_cast<int>(std::lround(size * ratio)));
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  QLinearGradient gradient(0, 0, 0, picture.height());
  gradient.setColorAt(0, QColor(app.icon.section(u' ', 0, 0)));
  gradient.setColorAt(1, QColor(app.icon.section(u' ', 1, 1)));
  painter.setPen(Qt::NoPen);
  painter.setBrush(gradient);
  painter.drawRoundedRect(picture.rect(), picture.width() * 0.26, picture.width() * 0.26);
  return picture;
}

MovedView::MovedView(Scheduler& scheduler) : DockView(scheduler) {
  auto clock = std::make_unique<test::TestFrameClock>();
  clock_ = clock.get();
  setFrameClock(std::move(clock));
}

bool MovedView::rest() {
  beat(60);
  return !isMoving();
}

std::unique_ptr<MovedView> makeView(const DockRow& row, int width) {
  static test::TestScheduler standing;
  return makeView(row, standing, width);
}

std::unique_ptr<MovedView> makeView(const DockRow& row, Scheduler& scheduler, int width) {
  auto view = std::make_unique<MovedView>(scheduler);
  view->setIconProvider(icon);
  view->setRow(row);
  view->refresh(morning());
  QSize size = view->sizeHint();
  if (width > 0) size.setWidth(width + view->margins().left() + view->margins().right());
  view->resize(size);
  view->grab();  // Delivers the pending resize.
  return view;
}

int difference(const QImage& a, const QImage& b) {
  if (a.size() != b.size()) return 255;
  int most = 0;
  for (int y = 0; y < a.height(); ++y)
    for (qsizetype i = 0; i < a.bytesPerLine(); ++i)
      most = std::max(most, std::abs(a.constScanLine(y)[i] - b.constScanLine(y)[i]));
  return most;
}

QImage paintedBy(QWidget& view, double ratio) {
  QImage image(view.size() * ratio, QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(ratio);
  image.fill(Qt::transparent);
  view.render(&image, {}, {}, QWidget::DrawChildren);
  return image;
}

QImage wallpaper(const QSize& size, double ratio) {
  QImage image(size * ratio, QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(ratio);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  const double w = size.width();
  const double h = size.height();
  painter.fillRect(QRectF(0, 0, w, h), QColor(0x11, 0x1F, 0x31));
  QPainterPath day;
  day.moveTo(w * 0.5, h);
  day.cubicTo(w * 0.55, h * 0.6, w * 0.5, h * 0.3, w * 0.54, 0);
  day.lineTo(w, 0);
  day.lineTo(w, h);
  painter.fillPath(day, QColor(0xFC, 0xEF, 0xDD));
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0xC9, 0xB4, 0x8C));
  painter.drawEllipse(QPointF(w * 0.2, h * 0.3), 20, 20);
  painter.setBrush(QColor(0xF2, 0x9F, 0x52));
  painter.drawEllipse(QPointF(w * 0.88, h * 0.3), 22, 22);
  return image;
}

QImage over(const QImage& wallpaper, DockView& view, double ratio) {
  QImage image = wallpaper;
  QPainter painter(&image);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  if (view.row().blurred) {
    QImage small = wallpaper.scaled(wallpaper.width() / 48, wallpaper.height() / 48, Qt::IgnoreAspectRatio,
                                    Qt::SmoothTransformation);
    small.setDevicePixelRatio(1);
    QPainterPath glass;
    const double corner = theme::kDockCorner * view.row().scale;
    if (view.row().style != DockStyle::Transparent) glass.addRoundedRect(view.glassRect(), corner, corner);
    painter.setClipPath(glass);
    painter.drawImage(QRectF(QPointF(), QSizeF(wallpaper.size()) / ratio), small);
    painter.setClipping(false);
  }
  if (!view.row().composited) painter.setClipRegion(view.outlineRegion());
  painter.drawImage(0, 0, paintedBy(view, ratio));
  return image;
}

void mouse(QWidget& view, QEvent::Type type, QPointF at, Qt::MouseButton button, quint64 milliseconds) {
  const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(button);
  QMouseEvent event(type, at, view.mapToGlobal(at), type == QEvent::MouseMove ? Qt::NoButton : button, held,
                    Qt::NoModifier);
  event.setTimestamp(milliseconds);
  QCoreApplication::sendEvent(&view, &event);
}

void click(QWidget& view, QPointF at, Qt::MouseButton button) {
  mouse(view, QEvent::MouseButtonPress, at, button);
  mouse(view, QEvent::MouseButtonRelease, at, button);
}

void press(QWidget& view, Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QKeyEvent event(QEvent::KeyPress, key, modifiers);
  QCoreApplication::sendEvent(&view, &event);
}

void wheel(QWidget& view, QPointF at, QPoint angle, Qt::KeyboardModifiers modifiers) {
  QWheelEvent event(at, view.mapToGlobal(at), QPoint(), angle, Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&view, &event);
}

void keep(const QImage& picture, const QString& name) {
  const QString folder = QDir::current().filePath(u"pictures"_s);
  QDir().mkpath(folder);
  const QString path = QDir(folder).filePath(name + u".png"_s);
  picture.save(path);
  std::printf("picture: %s\n", qPrintable(path));
}

}  // namespace tarnwick::testing
