#include "app/DockMenuHost.h"

#include "app/DockMenuModel.h"
#include "app/PanelHost.h"
#include "base/LocalFigures.h"
#include "store/AppStore.h"
#include "views/dock/DockMenu.h"
#include "views/theme/DesktopLook.h"
#include "views/theme/MenuStyle.h"
#include "views/theme/WindowFade.h"

namespace tarnwick {

DockMenuHost::DockMenuHost(AppStore& store, const Services& services, DockMenus& menus, DockController& dock,
                           const LiveDocks& docks, PanelHost& panels)
    : store_(store), services_(services), menus_(menus), dock_(dock), docks_(docks), panels_(panels) {}

DockMenuHost::~DockMenuHost() { drop(); }

void DockMenuHost::openTile(const QString& display, const QUuid& widget, const QRect& beside) {
  open(display, menus_.tile(widget, display), beside);
}

void DockMenuHost::openApplication(const QString& display, quint64 application, const QRect& beside) {
  open(display, menus_.application(application, display), beside);
}

void DockMenuHost::openWindows(const QString& display, quint64 application, const QRect& beside) {
  open(display, menus_.windows(application, display), beside);
  if (menu_) choice_ = application;
}

void DockMenuHost::openDock(const QString& display, const QRect& beside) {
  open(display, menus_.dock(display), beside);
}

/// A click on the application whose windows are listed has closed that menu by its press.
void DockMenuHost::chooseWindow(const QString& display, quint64 application) {
  const double sinceClosed = store_.scheduler().reference() - closedChoice_.second;
  if (closedChoice_.first == application && sinceClosed < Press::kHold) return;
  if (docks_.of(display)) openWindows(display, application, docks_.besideApplication(display, application));
}

void DockMenuHost::open(const QString& display, const QList<DockMenuEntry>& entries, const QRect& beside) {
  if (!dock_.panel(display) || entries.isEmpty()) return;
  close();
  auto* menu = new DockMenu(docks_.view(display));
  menu_ = menu;
  display_ = display;
  choice_ = 0;
  DockMenuModel::fill(*menu, entries);
  MenuStyle::takeDockColors(*menu, shownStyle(store_.config()));
  const auto clock = [this, display] { return WindowFade::clockOf(services_.clocks, services_.motion, display); };
  DockView* view = docks_.view(display);
  MenuStyle::install().fade(*menu, view ? view->window() : nullptr, clock);
  connect(menu, &QMenu::aboutToHide, this, [this, menu] { hides(menu); });
  mark(true);
  panels_.closeAtOnce();
  // The toolkit reports a double click twice, and the second report would close a menu that is open by then.
  const auto show = [this, menu, display, beside] {
    if (menu != menu_) return;
    if (Panel* owner = dock_.panel(display)) {
      owner->openMenu(*menu, dock_.mapFromContent(display, beside));
    } else {
      close();
    }
  };
  QMetaObject::invokeMethod(menu, show, Qt::QueuedConnection);
}

void DockMenuHost::hides(QMenu* menu) {
  closedChoice_ = {choice_, store_.scheduler().reference()};
  // It goes once its entry has run, even where that entry asks something and waits for the answer.
  menu->deleteLater();
  const auto forget = [this, menu] {
    // It may have been destroyed by then, without any signal.
    if (!menu_ || menu_ == menu) {
      menu_.clear();
      mark(false);
    }
    dock_.checkEdge();
  };
  QMetaObject::invokeMethod(this, forget, Qt::QueuedConnection);
}

QList<ItemCommand> DockMenuHost::commands(const QString& display, const QUuid& widget, quint64 application) {
  const QList<DockMenuEntry> entries = !widget.isNull()   ? menus_.tile(widget, display)
                                       : application != 0 ? menus_.application(application, display)
                                                          : menus_.dock(display);
  QList<ItemCommand> commands;
  QHash<QString, int> seen;
  for (const DockMenuEntry& entry : DockMenuModel::flat(entries)) {
    if (!entry.run) continue;
    // Windows of one title are distinguished by their place alone.
    const auto number = ++seen[entry.text];
    const QString text = number > 1 ? tr("%1 (%2)").arg(entry.text, LocalFigures::number(number)) : entry.text;
    commands.append({text, entry.run});
  }
  return commands;
}

void DockMenuHost::close() {
  if (!menu_) return;
  menu_->close();
  menu_->deleteLater();  // One that was never shown says nothing when it is closed.
  menu_.clear();
  mark(false);
}

void DockMenuHost::closeOn(const QString& display) {
  if (display == display_) close();
}

void DockMenuHost::drop() { delete menu_; }

void DockMenuHost::mark(bool open) {
  if (DockView* view = docks_.view(display_)) view->setOpenMenu(open ? menu_.data() : nullptr);
}

}  // namespace tarnwick
