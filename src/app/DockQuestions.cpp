#include "app/DockQuestions.h"

#include <QFileInfo>
#include <utility>

#include "app/DockMenuHost.h"
#include "app/PanelHost.h"
#include "store/AppStore.h"

namespace tarnwick {
namespace {

// For a dock that has to come out before something can be asked beside it.
constexpr double kBetweenLooks = 0.1;  // Seconds.
constexpr int kMostLooks = 50;

}  // namespace

DockQuestions::DockQuestions(AppStore& store, DockController& dock, const LiveDocks& docks, DockMenuHost& menus,
                             PanelHost& panels)
    : store_(store), dock_(dock), docks_(docks), menus_(menus), panels_(panels) {}

void DockQuestions::ask(const Question& question, const QString& display, std::function<void(bool accepted)> answer,
                        const QUuid& widget) {
  if (const auto before = std::exchange(waiting_, {}); before.answer) before.answer(false);
  waiting_ = {question, display, std::move(answer), widget};
  dockComesOut_.reset();
  if (dock_.isManuallyHidden()) dock_.toggle();
  look(0);
}

/// A dock may have to come out first, as when a file is what the program was started with.
void DockQuestions::look(int times) {
  const LiveDocks::Dock beside = docks_.ofOrFirst(waiting_.display);
  Panel* panel = beside ? dock_.panel(beside.display) : nullptr;
  if (panel && panel->isShown()) {
    menus_.close();
    const auto [question, display, answer, widget] = std::exchange(waiting_, {});
    QRect place = docks_.besideWidget(beside.display, widget);
    if (place.isEmpty()) place = docks_.glass(beside.display);
    panels_.ask(beside.display, question, *panel, dock_.mapFromContent(beside.display, place), answer);
    dock_.revealAtOnce(beside.display);
  } else if (times == kMostLooks) {
    std::exchange(waiting_, {}).answer(false);
  } else {
    if (panel) dock_.revealAtOnce(beside.display);
    dockComesOut_ = store_.scheduler().after(kBetweenLooks, [this, times] { look(times + 1); });
  }
}

void DockQuestions::withdraw() {
  dockComesOut_.reset();
  waiting_ = {};
  panels_.withdrawQuestion();
}

Question DockQuestions::aboutEntry(const ForeignEntry& entry, const QString& action) {
  return {
      tr("Run This App?"),
      tr("“%1” is not one of the installed apps. Run it only if you know where it comes from.").arg(entry.shownName()),
      entry.facts(action),
      tr("What would run"),
      tr("Run"),
      tr("Show in Files")};
}

Question DockQuestions::aboutKept(const KeptSettings& kept) {
  return {tr("Open These Settings?"),
          tr("Your settings are replaced with those in “%1”, without the widgets that this version of Tarnwick cannot "
             "use. The file itself is not changed.")
              .arg(QFileInfo(kept.file).fileName()),
          kept.leftOut.join(u'\n'),
          tr("What is left out"),
          tr("Open Without Them"),
          tr("Cancel")};
}

Question DockQuestions::aboutTrash() {
  return {tr("Empty Trash?"), tr("Delete everything in the trash? This cannot be undone."), {}, {}, tr("Empty Trash"),
          tr("Cancel")};
}

}  // namespace tarnwick
