#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QPointer>
#include <QStandardPaths>
#include <array>

#include "store/AppStore.h"
#include "views/controls/Buttons.h"
#include "views/settings/Pages.h"
#include "views/settings/SettingsWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr auto kUnits = std::to_array<SettingChoice>({
    {QT_TRANSLATE_NOOP("Settings", "Automatic"), "auto"},
    {QT_TRANSLATE_NOOP("Settings", "Celsius"), "celsius"},
    {QT_TRANSLATE_NOOP("Settings", "Fahrenheit"), "fahrenheit"},
});

class GeneralPage final : public SettingsPage {
 public:
  GeneralPage(AppStore& store, const SettingsServices& services)
      : SettingsPage(SettingsWords::tr("General"), store, services), services_(services) {
    addProgram();
    addWidgetSettings();
    addFiles();
  }

 private:
  void addProgram() {
    Card& card = *addCard();
    FormRow* login = addSwitch(card,
                               {QT_TRANSLATE_NOOP("Settings", "Launch at login"),
                                QT_TRANSLATE_NOOP("Settings", "Starts Tarnwick when you log in."),
                                QT_TRANSLATE_NOOP("Settings", "autostart startup")},
                               settingField(&DockConfiguration::launchAtLogin));
    if (const Capability can = services_.abilities().loginEntry; !can) login->setUnavailable(can.reason);
    FormRow* notifications = addSwitch(
        card,
        {QT_TRANSLATE_NOOP("Settings", "Notifications"),
         QT_TRANSLATE_NOOP("Settings", "Notifies you when a timer ends, a break is due or it is time to drink.")},
        settingField(&DockConfiguration::notificationsEnabled));
    if (const Capability can = services_.abilities().notifications; !can) notifications->setUnavailable(can.reason);
    FormRow* icon = addSwitch(card,
                              {QT_TRANSLATE_NOOP("Settings", "Show menu bar icon"),
                               QT_TRANSLATE_NOOP("Settings", "Shows an icon in the system tray that opens a panel."),
                               QT_TRANSLATE_NOOP("Settings", "status item tray")},
                              settingField(&DesktopOptions::showMenuBarIcon));
    FormRow* classic = addSwitch(card,
                                 {QT_TRANSLATE_NOOP("Settings", "Classic menu"),
                                  QT_TRANSLATE_NOOP("Settings", "The icon opens a plain menu instead of the panel.")},
                                 settingField(&DesktopOptions::classicMenu));
    const auto tray = [this] { return services_.abilities().tray; };
    showWhile(
        classic, [tray](const DockConfiguration& config) { return tray() && config.desktopOptions().showMenuBarIcon; },
        SettingsWords::tr("Only while the status icon is shown."));
    follow([icon, tray](const DockConfiguration&) { icon->setUnavailable(tray().reason); });
  }

  void addWidgetSettings() {
    Card& card = *addCard();
    addDropDown(card, {QT_TRANSLATE_NOOP("Settings", "Temperature"), "", QT_TRANSLATE_NOOP("Settings", "unit weather")},
                {[](const DockConfiguration& config) {
                   return config.temperatureUnit.value_or(config.fahrenheit ? u"fahrenheit"_s : u"celsius"_s);
                 },
                 [](DockConfiguration& config, const QString& unit) { config.temperatureUnit = unit; }},
                kUnits);
    addSwitch(card,
              {QT_TRANSLATE_NOOP("Settings", "Open folders in Finder"),
               QT_TRANSLATE_NOOP("Settings", "Pinned folders open in the file manager instead of a panel.")},
              settingField(&DockConfiguration::foldersInFinder));
    auto* buttons = new QWidget;
    auto* line = new QHBoxLayout(buttons);
    line->setContentsMargins(0, 0, 0, 0);
    auto* usual = new Button(SettingsWords::tr("Use Default"));
    auto* choose = new Button(SettingsWords::tr("Choose…"));
    line->addWidget(usual);
    line->addWidget(choose);
    connect(usual, &QPushButton::clicked, this, [this, choose] {
      choose->setFocus(Qt::OtherFocusReason);
      edit([](DockConfiguration& config) { config.screenshotFolder.clear(); });
    });
    FormRow* folder = addControl(
        card, {QT_TRANSLATE_NOOP("Settings", "Screenshots"), "", QT_TRANSLATE_NOOP("Settings", "folder pictures")},
        buttons);
    follow([folder, usual](const DockConfiguration& config) {
      usual->setVisible(!config.screenshotFolder.isEmpty());
      folder->setHelp(config.screenshotFolder.isEmpty()
                          ? SettingsWords::tr("Uses the folder in which the desktop saves screenshots.")
                          : pathText(config.screenshotFolder));
    });
    connect(choose, &QPushButton::clicked, this, [this] {
      auto* dialog = makeDialog(SettingsWords::tr("Screenshots"), QFileDialog::AcceptOpen);
      dialog->setFileMode(QFileDialog::Directory);
      if (!store().config().screenshotFolder.isEmpty()) dialog->setDirectory(store().config().screenshotFolder);
      connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& path) {
        edit([&](DockConfiguration& config) { config.screenshotFolder = path; });
      });
      dialog->open();
    });
  }

  void addFiles() {
    Card& card = *addCard();
    auto* exportButton = new Button(SettingsWords::tr("Export…"));
    exported_ = addControl(card,
                           {QT_TRANSLATE_NOOP("Settings", "Export settings"), kExportHelp,
                            QT_TRANSLATE_NOOP("Settings", "save backup configuration")},
                           exportButton);
    connect(exportButton, &QPushButton::clicked, this, &GeneralPage::exportSettings);
    auto* importButton = new Button(SettingsWords::tr("Import…"));
    imported_ = addControl(card,
                           {QT_TRANSLATE_NOOP("Settings", "Import settings"), kImportHelp,
                            QT_TRANSLATE_NOOP("Settings", "load restore configuration")},
                           importButton);
    connect(importButton, &QPushButton::clicked, this, &GeneralPage::importSettings);
    auto* setup = new Button(SettingsWords::tr("Open"));
    connect(setup, &QPushButton::clicked, this, [this] { services_.commands.continueSetup(); });
    FormRow* row = addControl(card, {QT_TRANSLATE_NOOP("Settings", "Setup"), ""}, setup);
    follow([row](const DockConfiguration& config) {
      row->setHelp(config.onboardingComplete ? SettingsWords::tr("Shows the welcome window again.")
                                             : SettingsWords::tr("Continues the welcome window where you left off."));
    });
  }

  QFileDialog* makeDialog(const QString& title, QFileDialog::AcceptMode mode) {
    auto* dialog = new QFileDialog(this, title);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(mode);
    return dialog;
  }
  QFileDialog* makeSettingsDialog(const QString& title, QFileDialog::AcceptMode mode) {
    QFileDialog* dialog = makeDialog(title, mode);
    dialog->setNameFilters({SettingsWords::tr("Settings (*.json)"), SettingsWords::tr("All files (*)")});
    dialog->setDirectory(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    return dialog;
  }

  void exportSettings() {
    QFileDialog* dialog = makeSettingsDialog(SettingsWords::tr("Export settings"), QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(u"json"_s);
    dialog->selectFile(u"Tarnwick.json"_s);
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& path) {
      store().clearError();
      store().exportConfiguration(path);
      say(*exported_, store().error().isEmpty() ? SettingsWords::tr("Saved as “%1”.") : QString(), kExportHelp, path);
    });
    dialog->open();
  }

  void importSettings() {
    QFileDialog* dialog = makeSettingsDialog(SettingsWords::tr("Import settings"), QFileDialog::AcceptOpen);
    dialog->setFileMode(QFileDialog::ExistingFile);
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& path) {
      store().clearError();
      imported_->setHelp(SettingsWords::tr("Reading “%1”…").arg(QFileInfo(path).fileName()));
      // The button stays: another file takes the place of one that a disk does not give.
      services_.edits.importConfiguration(path, [self = QPointer(this), path](bool taken) {
        if (!self) return;
        self->say(*self->imported_, taken ? SettingsWords::tr("Settings were imported from “%1”.") : QString(),
                  kImportHelp, path);
      });
    });
    dialog->open();
  }

  /// `done` is empty where it went wrong: why is shown in the message line of the window.
  static void say(FormRow& row, const QString& done, const char* otherwise, const QString& path) {
    row.setHelp(done.isEmpty() ? settingsText(otherwise) : done.arg(QFileInfo(path).fileName()));
  }

  static constexpr const char* kExportHelp =
      QT_TRANSLATE_NOOP("Settings", "Saves all settings to a file, without passwords and tokens.");
  static constexpr const char* kImportHelp =
      QT_TRANSLATE_NOOP("Settings", "Replaces all settings with those of a file.");

  const SettingsServices& services_;
  FormRow* exported_ = nullptr;
  FormRow* imported_ = nullptr;
};

}  // namespace

SettingsPage* makeGeneralPage(AppStore& store, const SettingsServices& services) {
  return new GeneralPage(store, services);
}

}  // namespace tarnwick
