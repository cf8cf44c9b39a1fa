#include "views/panels/PlainPanel.h"

#include "views/panels/PanelWords.h"
#include "widgets/catalog/WidgetDefinition.h"

namespace tarnwick {

namespace {

using Words = std::function<PlainWords(const TilePanel& panel, const TileSources& sources)>;

class PlainPanel final : public TilePanel {
 public:
  PlainPanel(const PanelContext& context, Words words) : TilePanel(context), words_(std::move(words)) {}

 protected:
  void refresh(const TileSources& sources) override {
    const PlainWords words = words_(*this, sources);
    EmptyState state;
    if (isConnectedFamily(definition().family)) state.badge = serviceBadge(definition());
    state.symbol = definition().symbol;
    state.title = title();
    state.sentence = words.sentence;
    state.button = words.button;
    state.isQuiet = !words.awaitsUser;
    state.act = [this] { context().commands.openEditor(context().widget, context().display); };
    showEmpty(state);
  }

 private:
  Words words_;
};

PlainWords notAvailable(const TilePanel& panel, const TileSources&) {
  return {PanelWords::tr("%1 is not available on this computer.").arg(panel.definition().name),
          PanelWords::tr("Edit Widget…")};
}

PlainWords comesLater(const TilePanel& panel, const TileSources&) {
  return {PanelWords::tr("%1 comes with a later version of Tarnwick.").arg(panel.definition().name), {}};
}

}  // namespace

std::unique_ptr<TilePanel> makeLaterPanel(const PanelContext& context) {
  return std::make_unique<PlainPanel>(context, comesLater);
}

std::unique_ptr<TilePanel> makePlainPanel(const PanelContext& context, const Words& words) {
  return std::make_unique<PlainPanel>(context, words);
}

std::unique_ptr<TilePanel> makePlainPanel(const PanelContext& context) {
  return std::make_unique<PlainPanel>(context, notAvailable);
}

}  // namespace tarnwick
