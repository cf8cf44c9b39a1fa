#pragma once

#include <QLabel>
#include <QStringList>

namespace tarnwick {

/// A key as it stands on a keyboard: "Ctrl+Alt+D" in three caps. Keys read from left to right in every language.
class KeyCaps final : public QLabel {
  Q_OBJECT
 public:
  explicit KeyCaps(const QString& key, QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QStringList caps_;
};

}  // namespace tarnwick
