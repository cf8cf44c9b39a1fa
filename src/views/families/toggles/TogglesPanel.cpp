#include "views/families/toggles/TogglesRoom.h"

#include <array>

#include "views/controls/PlainTip.h"
#include "views/controls/Rows.h"
#include "views/controls/Switch.h"
#include "views/panels/PanelWords.h"
#include "widgets/TileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct ToggleWords {
  Toggle toggle;
  const char* symbol;
  const char* name;
  const char* sentence;  ///< What the switch is for, on or off, while it is available.
};

constexpr std::array kToggles = {
    ToggleWords{Toggle::WiFi, "wifi", QT_TRANSLATE_NOOP("Tiles", "Wi-Fi"),
                QT_TRANSLATE_NOOP("Panels", "Wireless networks")},
    ToggleWords{Toggle::Bluetooth, "bluetooth", QT_TRANSLATE_NOOP("Tiles", "Bluetooth"),
                QT_TRANSLATE_NOOP("Panels", "Headphones, keyboards and other devices nearby")},
    ToggleWords{Toggle::DarkMode, "moon", QT_TRANSLATE_NOOP("Tiles", "Dark Mode"),
                QT_TRANSLATE_NOOP("Panels", "Dark colors for apps and windows")},
    ToggleWords{Toggle::DoNotDisturb, "bell.slash", QT_TRANSLATE_NOOP("Tiles", "Do Not Disturb"),
                QT_TRANSLATE_NOOP("Panels", "Keep notifications out of sight")},
    ToggleWords{Toggle::Mute, "speaker.slash", QT_TRANSLATE_NOOP("Tiles", "Mute"),
                QT_TRANSLATE_NOOP("Panels", "Silence everything on this computer")},
    ToggleWords{Toggle::KeepAwake, "cup.and.saucer", QT_TRANSLATE_NOOP("Tiles", "Keep Awake"),
                QT_TRANSLATE_NOOP("Panels", "Keep the screen on")},
};

class TogglesPanel final : public TilePanel {
 public:
  explicit TogglesPanel(const PanelContext& context) : TilePanel(context) {
    for (std::size_t i = 0; i < kToggles.size(); ++i) {
      const ToggleWords& words = kToggles[i];
      const QString name = TileWords::tr(words.name);
      rows_[i] = new ListRow(name);
      rows_[i]->setCaption(PanelWords::tr(words.sentence));
      rows_[i]->setParted(i > 0);
      switches_[i] = new Switch(name);
      rows_[i]->addControl(switches_[i]);
      body().addWidget(rows_[i]);
      connect(switches_[i], &QAbstractButton::clicked, this, [this, toggle = words.toggle](bool on) {
        this->context().toggles.set(toggle, on);
        refreshNow();  // Until the service has done it, the switch shows its real state.
      });
    }
  }

 protected:
  void refresh(const TileSources& sources) override {
    for (std::size_t i = 0; i < kToggles.size(); ++i) {
      const ToggleState state = sources.toggles.value(kToggles[i].toggle);
      const bool available = state.capability.available;
      switches_[i]->setChecked(state.on);
      switches_[i]->setEnabled(available);
      rows_[i]->setSymbol(QString::fromLatin1(kToggles[i].symbol), state.on ? Tone::AccentWord : Tone::Primary);
      const QString sentence = PanelWords::tr(kToggles[i].sentence);
      rows_[i]->setCaption(available || state.capability.reason.isEmpty() ? sentence : state.capability.reason);
      setPlainTip(*rows_[i], state.capability.reason);
      switches_[i]->setAccessibleDescription(state.capability.reason);
    }
  }

 private:
  std::array<ListRow*, kToggles.size()> rows_{};
  std::array<Switch*, kToggles.size()> switches_{};
};

}  // namespace

std::unique_ptr<TilePanel> makeTogglesPanel(const PanelContext& context) {
  return std::make_unique<TogglesPanel>(context);
}

}  // namespace tarnwick
