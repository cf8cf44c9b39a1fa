#include "views/families/meetings/ZoomPanel.h"

#include <QGridLayout>
#include <array>

#include "base/LocalFigures.h"
#include "views/controls/Buttons.h"
#include "views/panels/PanelWords.h"
#include "windows/ZoomMeetingService.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct ActionRow {
  ZoomAction action;
  const char* symbol;
  Button::Role role;
};
constexpr std::array kActions = {ActionRow{ZoomAction::Microphone, "mic", Button::Role::Primary},
                                 ActionRow{ZoomAction::Video, "video", Button::Role::Plain},
                                 ActionRow{ZoomAction::Share, "macwindow.on.rectangle", Button::Role::Plain},
                                 ActionRow{ZoomAction::Leave, "phone", Button::Role::Danger}};

class ZoomPanel final : public TilePanel {
 public:
  explicit ZoomPanel(const PanelContext& context)
      : TilePanel(context),
        meeting_(context.readings.meeting),
        facts_(new TextLabel({}, TextStyle::Body, Tone::Secondary)),
        grid_(new QWidget) {
    auto* again = new IconButton(u"arrow.clockwise"_s, PanelWords::tr("Refresh"));
    header().addAction(again);
    body().addWidget(facts_);
    auto* grid = new QGridLayout(grid_);
    grid->setContentsMargins(0, theme::kRowOverhang, 0, 0);
    grid->setSpacing(theme::kRowOverhang);
    for (std::size_t i = 0; i < kActions.size(); ++i) {
      const ActionRow& row = kActions[i];
      auto* button = buttons_[i] = new Button({}, row.role);
      button->setSymbol(QString::fromLatin1(row.symbol));
      const auto at = static_cast<int>(i);
      grid->addWidget(button, at / 2, at % 2);
      // What the user saw is what is pressed, or nothing.
      connect(button, &QPushButton::clicked, this,
              [this, button, &row] { meeting_.perform(row.action, button->label()); });
    }
    body().addWidget(grid_);
    connect(again, &QPushButton::clicked, this, [this] { meeting_.refresh(); });
    connect(&meeting_, &ZoomMeetingService::changed, this, &ZoomPanel::refreshNow);
    meeting_.refresh();
  }

 protected:
  void refresh(const TileSources& sources) override {
    const bool isOn = meeting_.connected();
    header().setNote(isOn ? LocalFigures::of(meeting_.duration().value_or(QString()), sources.locale) : QString());
    facts_->setVisible(isOn);
    grid_->setVisible(isOn);
    if (!isOn) {
      const bool isLooking = meeting_.error().isEmpty();
      showEmpty({u"video"_s, {}, title(), isLooking ? PanelWords::tr("Looking…") : meeting_.error(), {}, {}});
      return;
    }
    hideEmpty();
    const auto participants = meeting_.participants();
    const QString people = participants ? PanelWords::tr("Participants: %1").arg(LocalFigures::number(*participants))
                                        : PanelWords::tr("Participants unavailable");
    facts_->setText(meeting_.duration() ? people : people + u" · "_s + PanelWords::tr("Duration unavailable"));
    for (std::size_t i = 0; i < kActions.size(); ++i) {
      const auto label = meeting_.actions().constFind(kActions[i].action);
      buttons_[i]->setVisible(label != meeting_.actions().cend());
      if (label != meeting_.actions().cend()) buttons_[i]->setLabel(*label);
    }
    setMessage(meeting_.error());
  }

 private:
  ZoomMeetingService& meeting_;
  TextLabel* facts_;
  QWidget* grid_;
  std::array<Button*, kActions.size()> buttons_{};
};

}  // namespace

std::unique_ptr<TilePanel> makeZoomPanel(const PanelContext& context) { return std::make_unique<ZoomPanel>(context); }

}  // namespace tarnwick
