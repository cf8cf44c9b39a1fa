#include "desktop/Tray.h"

namespace tarnwick {

EitherTray::EitherTray(std::unique_ptr<Tray> first, std::unique_ptr<Tray> other)
    : first_(std::move(first)), other_(std::move(other)) {
  const auto take = [this] {
    // It may be the one that called.
    if (other_) other_.release()->deleteLater();
    Q_EMIT found();
  };
  connect(first_.get(), &Tray::found, this, take);
  connect(other_.get(), &Tray::found, this, take);
  connect(other_.get(), &Tray::missing, this, &Tray::missing);
  connect(first_.get(), &Tray::missing, this, [this] {
    if (other_) other_->look();
  });
}

EitherTray::~EitherTray() = default;

void EitherTray::look() { first_->look(); }

}  // namespace tarnwick
