#include "platform/wayland/PlainPanels.h"

#include <QCoreApplication>

#include "platform/wayland/PlainPanel.h"

namespace tarnwick {

namespace {

struct PlainPanelsWords {
  Q_DECLARE_TR_FUNCTIONS(tarnwick::WaylandPanels)
};

}  // namespace

std::unique_ptr<Panel> PlainPanels::make(std::unique_ptr<QWidget> content) {
  return std::make_unique<PlainPanel>(screens_, std::move(content));
}

Capability PlainPanels::captureProtection() const {
  return Capability::no(
      PlainPanelsWords::tr("On Wayland no app can hide its windows from screenshots and recordings."));
}

}  // namespace tarnwick
