#include "views/dock/GlassPicture.h"

#include <QImageReader>
#include <cmath>

#include "views/theme/Bands.h"
#include "views/theme/Blur.h"

namespace tarnwick {

namespace {

/// The middle of a picture, as large as it must be to cover `size`.
QImage covering(const QString& file, const QSize& size) {
  QImageReader reader(file);
  reader.setDecideFormatFromContent(true);
  reader.setAutoTransform(true);
  QSize own = reader.size();
  if (reader.transformation().testFlag(QImageIOHandler::TransformationRotate90)) own.transpose();
  QSize scaled = own.scaled(size, Qt::KeepAspectRatioByExpanding);
  if (reader.transformation().testFlag(QImageIOHandler::TransformationRotate90)) scaled.transpose();
  if (!own.isEmpty()) reader.setScaledSize(scaled);
  const QImage image = reader.read();
  if (image.isNull()) return {};
  QImage middle(size, QImage::Format_RGB32);
  middle.fill(Qt::black);
  QPainter painter(&middle);
  painter.drawImage(QPoint(size.width() - image.width(), size.height() - image.height()) / 2, image);
  return middle;
}

}  // namespace

QImage GlassPicture::render(const Key& key) {
  const double spread = key.look.blur * key.ratio;
  const int space = static_cast<int>(std::ceil(spread * 2));
  QImage whole = covering(key.look.file, key.size.grownBy({space, space, space, space}));
  if (whole.isNull()) return {};
  blur(whole, spread);
  QImage picture = whole.copy(QRect(QPoint(space, space), key.size));
  QColor veil(key.light ? Qt::white : Qt::black);
  veil.setAlphaF(static_cast<float>(qBound(0.0, key.look.dim, 1.0)));
  QPainter(&picture).fillRect(picture.rect(), veil);
  return picture;
}

void GlassPicture::make(const Key& key) {
  key_ = key;
  work_.start([key](const std::stop_token&) { return render(key); },
              [this](const QImage& picture) {
                picture_ = QPixmap::fromImage(picture);
                Q_EMIT made();
              });
}

void GlassPicture::paint(QPainter& painter, const QRectF& glass, const QRectF& whole, const DockPicture& look,
                         double corner, double ratio, bool light) {
  if (look.file.isEmpty() || whole.isEmpty()) {
    key_ = {};
    picture_ = {};
    work_.cancel();
    return;
  }
  const Key key{look, (whole.size() * ratio).toSize(), ratio, light};
  if (key != key_) make(key);
  if (picture_.isNull()) return;
  QBrush brush(picture_);
  brush.setTransform(QTransform::fromTranslate(whole.left(), whole.top())
                         .scale(whole.width() / picture_.width(), whole.height() / picture_.height()));
  painter.setPen(Qt::NoPen);
  painter.setBrush(brush);
  inBands(painter, glass, [&] { painter.drawRoundedRect(glass, corner, corner); });
}

}  // namespace tarnwick
