#include "views/theme/Symbols.h"

#include <QHash>

#include "views/theme/SymbolTable.h"
#include "views/theme/Upright.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kGridSize = 20;

QString drawnName(const QString& name) {
  const auto& table = symbolTable();
  if (table.contains(name)) return name;
  const QString plain = name.endsWith(u".fill"_s) ? name.chopped(5) : name;
  return table.contains(plain) ? plain : u"square"_s;
}

}  // namespace

bool Symbols::has(const QString& name) { return name == u"square" || drawnName(name) != u"square"; }

const QPainterPath& Symbols::outline(const QString& name) {
  static QHash<QString, std::shared_ptr<const QPainterPath>> parsed;
  auto& path = parsed[name];
  if (!path) path = std::make_shared<const QPainterPath>(parseSymbol(symbolTable().value(drawnName(name))));
  return *path;
}

double Symbols::strokeWidth(double size) {
  if (size >= kGridSize) return 1.6 * size / kGridSize;
  return 1.5 + (size - 16) * 0.025;
}

void Symbols::draw(QPainter& painter, const QString& name, const QRectF& box, const QColor& color) {
  const double scale = box.width() / kGridSize;
  painter.save();
  keepUpright(painter, box.center().x());
  painter.translate(box.topLeft());
  painter.scale(scale, scale);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(color, strokeWidth(box.width()) / scale, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPath(outline(name));
  painter.restore();
}

}  // namespace tarnwick
