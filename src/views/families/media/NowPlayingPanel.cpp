#include "views/families/media/NowPlayingPanel.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>

#include "media/MediaService.h"
#include "views/controls/Buttons.h"
#include "views/controls/ControlLook.h"
#include "views/controls/PaneMenu.h"
#include "views/controls/PlainTip.h"
#include "views/controls/Slider.h"
#include "views/families/media/CoverPainting.h"
#include "views/families/media/PlaybackTiles.h"
#include "views/panels/PanelWords.h"
#include "views/theme/Glass.h"
#include "views/theme/TransportGlyphs.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kCoverSide = 96;
constexpr double kCoverRound = 12;
constexpr int kShadow = 8;  ///< How far the shadow of the cover reaches below it.
constexpr int kBesideCover = 14;
constexpr int kButton = 40;
constexpr double kPlayMark = 16;
constexpr double kSkipMark = 13;
constexpr int kFarthest = 86'400;  ///< Seconds that the slider counts one by one.

/// The cover with a soft shadow.
class CoverView final : public QWidget {
 public:
  CoverView() { setFixedSize(kCoverSide, kCoverSide + kShadow); }

  void setCover(const QImage& cover) {
    if (cover.cacheKey() == cover_.cacheKey() && cover.isNull() == cover_.isNull()) return;
    cover_ = cover;
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF place(0, 0, kCoverSide, kCoverSide);
    painter.setPen(Qt::NoPen);
    constexpr int kDarkness = 12;
    painter.setBrush(QColor(0, 0, 0, kDarkness));
    for (int depth = 1; depth <= kShadow; ++depth) {
      const double inset = kShadow - depth;
      painter.drawRoundedRect(place.adjusted(inset / 2, inset, -inset / 2, depth), kCoverRound, kCoverRound);
    }
    const ControlLook& look = lookOf(*this);
    paintCover(painter, place, kCoverRound, cover_, look.palette, look.accentColor());
  }

 private:
  QImage cover_;
};

/// A button with one of the marks of players.
class TransportButton final : public PaintedButton {
 public:
  enum class Mark { Previous, Play, Pause, Next };

  TransportButton(Mark mark, const QString& label) : PaintedButton(label), mark_(mark) {
    setFixedSize(kButton, kButton);
    setPlainTip(*this, label);
  }
  void setMark(Mark mark, const QString& label) {
    if (std::exchange(mark_, mark) == mark) return;
    setLabel(label);
    setPlainTip(*this, label);
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    prepare(painter);
    const ControlLook& look = this->look();
    const bool isMain = mark_ == Mark::Play || mark_ == Mark::Pause;
    const QRectF disc = QRectF(rect()).adjusted(1, 1, -1, -1);
    if (isMain || isDown() || underMouse())
      drawRounded(painter, disc, disc.height() / 2, isMain ? ground() : look.palette.well);
    const QPointF middle = QRectF(rect()).center();
    const QColor& ink = look.palette.primary;
    if (mark_ == Mark::Play) drawPlayGlyph(painter, middle, kPlayMark, ink);
    if (mark_ == Mark::Pause) drawPauseGlyph(painter, middle, kPlayMark - 1, ink);
    // The one before is on the side from which people read.
    const bool isBack = (mark_ == Mark::Previous) != (layoutDirection() == Qt::RightToLeft);
    if (!isMain) drawSkipGlyph(painter, middle, kSkipMark, isBack, ink);
    if (showsFocus()) drawFocusLine(painter, disc, disc.height() / 2, look);
  }

 private:
  Mark mark_;
};

class NowPlayingPanel final : public TilePanel {
 public:
  explicit NowPlayingPanel(const PanelContext& context)
      : TilePanel(context),
        media_(context.readings.media),
        cover_(new CoverView),
        title_(new TextLabel({}, TextStyle::Title)),
        artist_(new TextLabel({}, TextStyle::Body, Tone::Secondary)),
        album_(new TextLabel({}, TextStyle::Caption, Tone::Secondary)),
        who_(new TextLabel({}, TextStyle::Caption, Tone::Tertiary)),
        timeline_(new QWidget),
        slider_(new Slider(PanelWords::tr("Playback position"))),
        elapsed_(new TextLabel({}, TextStyle::Caption, Tone::Secondary)),
        left_(new TextLabel({}, TextStyle::Caption, Tone::Secondary)),
        transport_(new QWidget),
        toggle_(new TransportButton(TransportButton::Mark::Play, PanelWords::tr("Play"))),
        player_(new Button({})),
        note_(new TextLabel({}, TextStyle::Caption, Tone::Secondary)),
        foot_(new QWidget) {
    makeHeader();
    makeFacts();
    makeTimeline();
    makeTransport();
    makeFoot();
    beginWith(*toggle_);
    connect(&media_, &MediaService::changed, this, &NowPlayingPanel::refreshNow);
    // The place in it may have gone on elsewhere.
    media_.refresh();
  }

 protected:
  void refresh(const TileSources& sources) override {
    const PlaybackSnapshot& snapshot = media_.snapshot();
    if (!media_.connected()) {
      setMessage({});
      return showEmpty({u"music.note"_s,
                        {},
                        PanelWords::tr("Connect a player"),
                        PanelWords::tr("Shows what plays on this computer, with buttons for it."),
                        PanelWords::tr("Connect"),
                        [this] { media_.connectTo(MediaSource::system()); }});
    }
    hideEmpty();
    player_->setLabel(media_.titleOf(media_.source()));
    player_->setAccessibleDescription(PanelWords::tr("Player"));
    note_->setText(noteOf(media_.source()));
    cover_->setCover(media_.cover());
    title_->setText(snapshot.title);
    artist_->setText(snapshot.artist);
    album_->setText(snapshot.album);
    who_->setText(snapshot.source);
    for (TextLabel* each : {artist_, album_, who_}) each->setVisible(!each->text().isEmpty());
    const bool isPlaying = snapshot.playing;
    toggle_->setMark(isPlaying ? TransportButton::Mark::Pause : TransportButton::Mark::Play,
                     isPlaying ? PanelWords::tr("Pause") : PanelWords::tr("Play"));
    const bool hasPlayer = !snapshot.source.isEmpty();
    transport_->setVisible(hasPlayer);
    timeline_->setVisible(hasPlayer && snapshot.duration > 0);
    locale_ = sources.locale;
    showPosition(snapshot.position(sources.now));
    setMessage(media_.error());
  }

 private:
  void makeHeader() {
    auto* again = new IconButton(u"arrow.clockwise"_s, PanelWords::tr("Refresh"));
    header().addAction(again);
    connect(again, &QPushButton::clicked, this, [this] { media_.refresh(); });
  }
  void makeFacts() {
    auto* row = new QHBoxLayout;
    row->setSpacing(kBesideCover);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addStretch();
    for (TextLabel* each : {title_, artist_, album_, who_}) texts->addWidget(each);
    texts->addStretch();
    row->addWidget(cover_);
    row->addLayout(texts, 1);
    body().addLayout(row);
  }
  void makeTimeline() {
    auto* column = new QVBoxLayout(timeline_);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(slider_);
    auto* times = new QHBoxLayout;
    times->addWidget(elapsed_);
    times->addStretch();
    times->addWidget(left_);
    column->addLayout(times);
    body().addWidget(timeline_);
    slider_->setFormat([](int) { return QString(); });
    slider_->setTracking(false);
    constexpr int kStep = 5, kPage = 30;
    slider_->setSingleStep(kStep);
    slider_->setPageStep(kPage);
    connect(slider_, &Slider::valueChanged, this, [this](int value) {
      media_.control({MediaAction::Kind::Seek, static_cast<double>(value)});
    });
    connect(slider_, &Slider::sliderMoved, this, [this](int value) { writeTimes(value); });
  }
  void makeTransport() {
    auto* row = new QHBoxLayout(transport_);
    row->setContentsMargins(0, theme::kRowOverhang, 0, 0);
    row->setSpacing(theme::kRowOverhang);
    auto* before = new TransportButton(TransportButton::Mark::Previous, PanelWords::tr("Previous track"));
    auto* after = new TransportButton(TransportButton::Mark::Next, PanelWords::tr("Next track"));
    row->addStretch();
    for (TransportButton* each : {before, toggle_, after}) row->addWidget(each);
    row->addStretch();
    body().addWidget(transport_);
    const auto sends = [this](TransportButton* button, MediaAction::Kind kind) {
      connect(button, &QPushButton::clicked, this, [this, kind] { media_.control({kind}); });
    };
    sends(before, MediaAction::Kind::Previous);
    sends(toggle_, MediaAction::Kind::Toggle);
    sends(after, MediaAction::Kind::Next);
  }
  void makeFoot() {
    addSection(PanelWords::tr("Player"));
    auto* row = new QHBoxLayout(foot_);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(theme::kRowOverhang);
    auto* leave = new Button(PanelWords::tr("Disconnect"), Button::Role::Quiet);
    player_->setSymbol(u"chevron.down"_s);
    row->addWidget(player_, 1);
    row->addWidget(leave);
    body().addWidget(foot_);
    note_->setWordWrap(true);
    body().addSpacing(theme::kRowOverhang);
    body().addWidget(note_);
    connect(player_, &QPushButton::clicked, this, [this] { choosePlayer(); });
    connect(leave, &QPushButton::clicked, this, [this] { media_.disconnect(true); });
  }

  void choosePlayer() {
    QList<PaneMenuEntry> entries;
    for (const MediaSource& source : media_.sources())
      entries.append({media_.titleOf(source), [this, source] { media_.connectTo(source); }});
    PaneMenu::open(*player_, QPoint(0, player_->height()), PanelWords::tr("Player"), entries);
  }
  static QString noteOf(const MediaSource& source) {
    if (source.isSystem())
      return PanelWords::tr("Live metadata from macOS. Availability depends on the current player and macOS version.");
    return source.isBrowser()
               ? PanelWords::tr(
                     "Reads and controls the selected YouTube tab. Requires browser Automation and JavaScript "
                     "from Apple Events.")
               : PanelWords::tr("Uses local player Automation. macOS may ask you to allow access.");
  }

  void showPosition(double position) {
    slider_->setEnabled(media_.canSeek());
    const double duration = media_.snapshot().duration;
    if (slider_->isSliderDown()) return;
    const QSignalBlocker blocked(slider_);
    slider_->setRange(0, static_cast<int>(std::clamp(duration, 1.0, double{kFarthest})));
    slider_->setValue(static_cast<int>(std::min(position, double{kFarthest})));
    writeTimes(position);
  }
  void writeTimes(double position) {
    const double duration = media_.snapshot().duration;
    elapsed_->setText(playbackTime(position, locale_));
    left_->setText(u"−"_s + playbackTime(duration - std::floor(position), locale_));
  }

  MediaService& media_;
  QLocale locale_;
  CoverView* cover_;
  TextLabel* title_;
  TextLabel* artist_;
  TextLabel* album_;
  TextLabel* who_;
  QWidget* timeline_;
  Slider* slider_;
  TextLabel* elapsed_;
  TextLabel* left_;
  QWidget* transport_;
  TransportButton* toggle_;
  Button* player_;
  TextLabel* note_;
  QWidget* foot_;
};

}  // namespace

std::unique_ptr<TilePanel> makeNowPlayingPanel(const PanelContext& context) {
  return std::make_unique<NowPlayingPanel>(context);
}

}  // namespace tarnwick
