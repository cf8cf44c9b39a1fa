#include "views/panels/PlainPanel.h"

#include <QLatin1StringView>
#include <algorithm>
#include <array>

#include "views/panels/PanelWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct Sentence {
  QLatin1StringView word;  ///< A kind or a family.
  const char* text;
};

/// What is worth knowing of widgets that need no service. Others say that they are not available.
constexpr std::array kSentences = {
    Sentence{"dockSeparator"_L1, QT_TRANSLATE_NOOP("Panels", "A line that parts groups of tiles.")},
    Sentence{"dockSpace"_L1, QT_TRANSLATE_NOOP("Panels", "Room that keeps groups of tiles apart.")},
    Sentence{"launcher"_L1, QT_TRANSLATE_NOOP("Panels", "Choose the application that this tile opens.")},
    Sentence{"weather"_L1, QT_TRANSLATE_NOOP("Panels", "Choose a place to see its weather here.")},
};

QString sentenceFor(const WidgetDefinition& definition) {
  if (isConnectedFamily(definition.family))
    return PanelWords::tr("Connect %1 to see its latest values here.").arg(definition.name);
  for (const QString& word : {definition.id, definition.family})
    if (const auto row = std::ranges::find(kSentences, word, &Sentence::word); row != kSentences.end())
      return PanelWords::tr(row->text);
  return PanelWords::tr("%1 is not available on this computer.").arg(definition.name);
}

QString buttonFor(const WidgetDefinition& definition) {
  if (isConnectedFamily(definition.family)) return PanelWords::tr("Connect…");
  if (definition.family == u"weather"_s) return PanelWords::tr("Choose Place…");
  if (definition.family == u"launcher"_s) return PanelWords::tr("Choose App…");
  return PanelWords::tr("Edit Widget…");
}

/// Whether there is something that only the user can tell.
bool awaitsUser(const WidgetDefinition& definition) {
  return isConnectedFamily(definition.family) || definition.family == u"weather"_s ||
         definition.family == u"launcher"_s;
}

class PlainPanel final : public TilePanel {
 public:
  explicit PlainPanel(const PanelContext& context) : TilePanel(context) {}

 protected:
  void refresh(const TileSources& sources) override {
    EmptyState state;
    if (isConnectedFamily(definition().family)) state.initial = badgeInitial(definition());
    state.symbol = definition().symbol;
    state.title = title();
    state.sentence = sentenceFor(definition());
    const QString opened = sources.applications.value(widget().options.value(u"path"_s)).name;
    if (definition().family == u"launcher"_s && !opened.isEmpty())
      state.sentence = PanelWords::tr("Opens %1.").arg(opened);
    state.button = buttonFor(definition());
    state.isQuiet = !awaitsUser(definition()) || !opened.isEmpty();
    if (context().actions.openEditor)
      state.act = [edit = context().actions.openEditor, id = context().widget] { edit(id); };
    showEmpty(state);
  }
};

}  // namespace

std::unique_ptr<TilePanel> makePlainPanel(const PanelContext& context) { return std::make_unique<PlainPanel>(context); }

}  // namespace tarnwick
