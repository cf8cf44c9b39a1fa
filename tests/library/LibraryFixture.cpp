#include "library/LibraryFixture.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>

#include "base/DomainError.h"
#include "services/Keychain.h"
#include "store/DocumentEdits.h"
#include "widgets/catalog/Options.h"

namespace tarnwick::test {

using namespace Qt::StringLiterals;

QCoro::Task<Capability> FakeConnections::keepsCredentials() const { co_return keeps; }

QCoro::Task<bool> FakeConnections::hasCredential(DockWidget widget, std::stop_token) const {
  if (!failure.isEmpty()) throw DomainError::invalid(failure);
  co_return kept.contains(Keychain::account(widget));
}

QCoro::Task<> FakeConnections::saveCredential(DockWidget widget, QString value, std::stop_token stop) {
  if (asksUser) {
    ServiceCall question;
    const QJsonValue answer = co_await keyring.json(std::move(question), stop);
  }
  if (!failure.isEmpty()) throw DomainError::invalid(failure);
  kept.insert(Keychain::account(widget), value);
}

QCoro::Task<std::optional<Connections::SignedIn>> FakeConnections::signedIn(DockWidget widget, std::stop_token) const {
  const auto client = clients.constFind(Keychain::account(widget));
  if (client == clients.constEnd()) co_return std::nullopt;
  co_return SignedIn{*client, true};
}

QCoro::Task<QString> FakeConnections::signIn(DockWidget widget, QString clientID, std::optional<QString> secret,
                                             OAuthVisit visit, std::stop_token stop) {
  signIns << clientID + u' ' + secret.value_or(u"kept"_s);
  ServiceCall page;
  page.url = QUrl(u"https://service.example/sign-in?state=hidden"_s);
  visit.open(page.url, [](bool) {});
  const QJsonValue answer = co_await browser.json(std::move(page), stop);
  visit.returned();
  clients.insert(Keychain::account(widget), clientID);
  kept.insert(Keychain::account(widget), u"record"_s);
  co_return answer.toString();
}

QCoro::Task<> FakeConnections::removeCredential(DockWidget widget, std::stop_token) {
  if (!failure.isEmpty()) throw DomainError::invalid(failure);
  kept.remove(Keychain::account(widget));
  clients.remove(Keychain::account(widget));
  co_return;
}

QCoro::Task<> FakeConnections::unlock(std::stop_token stop) {
  ServiceCall question;
  const QJsonValue answer = co_await keyring.json(std::move(question), stop);
  if (answer.toBool()) failure.clear();
}

QCoro::Task<QJsonValue> FakeConnections::ask(DockWidget widget, std::optional<QString> credential,
                                             std::stop_token stop) {
  const QString used = credential ? *credential : kept.value(Keychain::account(widget));
  sent << (used.isEmpty() ? u"none"_s : used);
  ServiceCall call;
  call.url = QUrl(widget.options.value(option::endpoint));
  const QJsonValue answer = co_await service.json(std::move(call), stop);
  co_return answer;
}

QCoro::Task<RemoteValue> FakeConnections::attempt(DockWidget widget, std::optional<QString> credential,
                                                  std::stop_token stop) {
  RemoteValue value;
  const QJsonValue answer = co_await ask(std::move(widget), std::move(credential), stop);
  value.value = answer.toString();
  co_return value;
}

QCoro::Task<QJsonValue> FakeConnections::answer(DockWidget widget, std::optional<QString> credential,
                                                std::stop_token stop) {
  return ask(std::move(widget), std::move(credential), stop);
}

LibraryFixture::LibraryFixture() {
  store().edit([](DockConfiguration& config) {
    config.profiles = {DockProfile::initial(), DockProfile::initial()};
    config.profiles[1].name = u"Work"_s;
    config.profiles[1].widgets.clear();
    config.activeProfileID = config.profiles[0].id;
  });
  QDir(folder_.path()).mkpath(u"applications"_s);
  QFile entry(folder_.filePath(u"applications/writer.desktop"_s));
  if (entry.open(QIODevice::WriteOnly))
    entry.write(
        "[Desktop Entry]\nType=Application\nName=Letters\nExec=true\nCategories=TextEditor;Utility;\n"
        "MimeType=text/plain;\n");
  entry.close();
  AppEnvironment environment;
  environment.home = environment.dataHome = folder_.path();
  environment.executableFolders = {u"/usr/bin"_s, u"/bin"_s};
  apps_ = std::make_unique<InstalledApps>(environment, scheduler_);
  QSignalSpy changed(apps_.get(), &InstalledApps::changed);
  apps_->load();
  if (!apps_->loaded()) changed.wait();
  edits_ = std::make_unique<UndoableEdits>(store(), *apps_, undo_);
}

DockWidget LibraryFixture::add(const QString& kind, const QMap<QString, QString>& options) {
  DockWidget widget{QUuid::createUuid(), kind, {}, options};
  store().addWidget(widget, store().profile().id);
  return widget;
}

const DockWidget* LibraryFixture::find(const QUuid& id) {
  return DocumentEdits::find(std::as_const(store()).config(), id);
}

PreviewSources LibraryFixture::previews() {
  return {[this] {
            KeptSources::Setup setup;
            auto machine = std::make_unique<Machine>(*this);
            machine_ = machine.get();
            setup.own.push_back(std::move(machine));
            return std::make_unique<KeptSources>(std::move(setup));
          },
          {}};
}

WindowServices LibraryFixture::services() {
  return {*edits_, commands, *apps_, screens_, forms, connections, previews(), [] { return DesktopAbilities(); }};
}

void LibraryFixture::Machine::fill(TileSources& sources, const QList<DockWidget>& widgets) {
  for (const DockWidget& widget : widgets) fixture_.asked.insert(widget.kind);
  sources = SnapshotFixture::sources();
  sources.weather = {};
  if (!fixture_.hasSensor) sources.readings.celsius.reset();
}

void LibraryFixture::announce(const QList<Family>& families) { Q_EMIT machine_->changed(families); }

std::unique_ptr<LibraryWindow> LibraryFixture::library() {
  auto window = std::make_unique<LibraryWindow>(store(), services());
  window->setAttribute(Qt::WA_DeleteOnClose, false);
  window->setUndo([this] { undo_.undo(); });
  window->present();
  QCoreApplication::processEvents();
  return window;
}

std::unique_ptr<EditorWindow> LibraryFixture::editor(const QUuid& widget) {
  auto window = std::make_unique<EditorWindow>(store(), widget, services());
  window->setAttribute(Qt::WA_DeleteOnClose, false);
  window->present();
  QCoreApplication::processEvents();
  return window;
}

}  // namespace tarnwick::test
