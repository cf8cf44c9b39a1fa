#include "platform/docks/module/PlasmaPanel.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QRegularExpression>
#include <algorithm>
#include <utility>

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr int kPlasmaPatienceMs = 1000;

const QString kHiding = u"hiding"_s;
const QString kShown = u"none"_s;
const QString kHides = u"autohide"_s;

struct Panel {
  QString id;
  QString location;
  QString hiding;
};

QDBusMessage scriptCall(const QString& script) {
  QDBusMessage call = QDBusMessage::createMethodCall(u"org.kde.plasmashell"_s, u"/PlasmaShell"_s,
                                                     u"org.kde.PlasmaShell"_s, u"evaluateScript"_s);
  // A restart of the shell is the session's affair.
  call.setAutoStartService(false);
  call << script;
  return call;
}

/// Whether the time for an answer is over. A shell that refuses does not block, and neither does one that is not there.
bool isSilence(QDBusError::ErrorType error) {
  return error == QDBusError::NoReply || error == QDBusError::Timeout || error == QDBusError::TimedOut;
}

/// What a script prints; none when the shell does not answer or refuses. One that `isSilent` is not asked at all.
std::optional<QString> run(const QString& script, bool& isSilent) {
  if (isSilent) return std::nullopt;
  const QDBusMessage answer = QDBusConnection::sessionBus().call(scriptCall(script), QDBus::Block, kPlasmaPatienceMs);
  if (answer.type() != QDBusMessage::ReplyMessage) {
    isSilent = isSilence(QDBusError(answer).type());
    return std::nullopt;
  }
  return answer.arguments().value(0).toString();
}

const QString kListPanels =
    uR"(var all = panels();
for (var i = 0; i < all.length; ++i) print("<" + all[i].id + " " + all[i].location + " " + all[i].hiding + ">");)"_s;

QList<Panel> panelsIn(const QString& printed) {
  static const QRegularExpression row(u"<(\\d+) (\\w+) (\\w+)>"_s);
  QList<Panel> found;
  for (auto rows = row.globalMatch(printed); rows.hasNext();) {
    const QRegularExpressionMatch match = rows.next();
    found << Panel{match.captured(1), match.captured(2), match.captured(3)};
  }
  return found;
}

QList<Panel> panels(bool& isSilent) { return panelsIn(run(kListPanels, isSilent).value_or(QString())); }

bool liesAtTheBottom(const Panel& panel) { return panel.location == u"bottom"_s; }

const Panel* find(const QList<Panel>& panels, const QString& id) {
  const auto found = std::find_if(panels.begin(), panels.end(), [&](const Panel& panel) { return panel.id == id; });
  return found == panels.end() ? nullptr : &*found;
}

/// Values go into a script, so they must be words.
bool isWord(const QString& text) {
  static const QRegularExpression word(u"^[a-z0-9]+$"_s);
  return word.match(text).hasMatch();
}

}  // namespace

QList<DockSetting> PlasmaPanel::own(DockPreference preference) {
  QList<DockSetting> settings;
  if (preference == DockPreference::AutohideDelay) return settings;
  bool isSilent = false;
  for (const Panel& panel : panels(isSilent)) {
    if (liesAtTheBottom(panel)) settings << DockSetting{panel.id, kHiding, panel.hiding};
  }
  return settings;
}

QList<DockSetting> PlasmaPanel::hiding(DockPreference, double, const QList<DockSetting>& own) {
  QList<DockSetting> settings = own;
  for (DockSetting& setting : settings) setting.value = kHides;
  return settings;
}

bool PlasmaPanel::knows(DockPreference preference, const DockSetting& setting) const {
  static const QRegularExpression number(u"^\\d+$"_s);
  return preference == DockPreference::Autohide && setting.name == kHiding && number.match(setting.place).hasMatch() &&
         isWord(setting.value.value_or(kShown));
}

bool PlasmaPanel::put(const DockSetting& setting, const QList<DockValue>& over) {
  const QString mode = setting.value.value_or(kShown);
  if (setting.name != kHiding || !isWord(setting.place) || !isWord(mode)) return false;
  const QList<Panel> all = panels(isSilent_);
  const Panel* const panel = find(all, setting.place);
  // A panel that the user removed has nothing to get back. A shell without any has not finished its start.
  if (!panel) return !all.isEmpty();
  if (panel->hiding != mode && !over.isEmpty() && !over.contains(panel->hiding)) return true;
  pending_ << DockSetting{setting.place, kHiding, mode};
  if (panel->hiding == mode) return true;
  return run(u"panelById(%1).hiding = \"%2\";"_s.arg(setting.place, mode), isSilent_).has_value();
}

bool PlasmaPanel::flush() {
  const QList<DockSetting> expected = std::exchange(pending_, {});
  bool isSilent = std::exchange(isSilent_, false);
  if (expected.isEmpty()) return !isSilent;
  const QList<Panel> all = panels(isSilent);
  if (all.isEmpty()) return false;
  return std::all_of(expected.begin(), expected.end(), [&](const DockSetting& setting) {
    const Panel* const panel = find(all, setting.place);
    return !panel || panel->hiding == setting.value;
  });
}

void PlasmaPanel::askWhetherItAnswers(const std::function<void(bool answers)>& answer) {
  call_ = std::make_unique<QDBusPendingCallWatcher>(
      QDBusConnection::sessionBus().asyncCall(scriptCall(kListPanels), kPlasmaPatienceMs));
  const auto finished = [answer](const QDBusPendingCallWatcher* call) {
    answer(!call->isError() || !isSilence(call->error().type()));
  };
  QObject::connect(call_.get(), &QDBusPendingCallWatcher::finished, call_.get(), finished);
}

void PlasmaPanel::askWhetherThere(std::function<void(bool isThere)> answer) {
  question_ = std::make_unique<QDBusPendingCallWatcher>(
      QDBusConnection::sessionBus().asyncCall(scriptCall(kListPanels), kPlasmaPatienceMs));
  const auto finished = [answer = std::move(answer)](QDBusPendingCallWatcher* question) {
    const QList<Panel> found = panelsIn(question->reply().arguments().value(0).toString());
    answer(std::any_of(found.begin(), found.end(), &liesAtTheBottom));
  };
  QObject::connect(question_.get(), &QDBusPendingCallWatcher::finished, question_.get(), finished);
}

}  // namespace tarnwick
