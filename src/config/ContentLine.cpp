#include "config/ContentLine.h"

#include <QHash>
#include <utility>

#include "base/DomainError.h"

namespace tarnwick {
namespace {

using Options = QMap<QString, QString>;

/// A new line behind the others, with nothing in it.
ContentLine& appendTo(QList<ContentLine>& lines) {
  lines.resize(lines.size() + 1);
  return lines.last();
}

void addOptions(const QUuid& widget, const Options& before, const Options& after, QList<ContentLine>& to) {
  const auto add = [&](const QString& key, const QString* value) {
    if (DockConfiguration::isCredential(key)) return;
    ContentLine& line = appendTo(to);
    line.widget = widget;
    line.key = key;
    if (value) line.value = *value;
  };
  for (auto option = after.cbegin(); option != after.cend(); ++option) {
    const auto old = before.constFind(option.key());
    if (old == before.cend() || *old != *option) add(option.key(), &*option);
  }
  for (auto option = before.cbegin(); option != before.cend(); ++option) {
    if (!after.contains(option.key())) add(option.key(), nullptr);
  }
}

DockWidget* find(DockConfiguration& config, const QUuid& id) {
  for (qsizetype p = 0; p < config.profiles.size(); ++p) {
    const QList<DockWidget>& widgets = config.profiles.at(p).widgets;
    for (qsizetype w = 0; w < widgets.size(); ++w) {
      if (widgets.at(w).id == id) return &config.profiles[p].widgets[w];
    }
  }
  return nullptr;
}

void applyOption(const ContentLine& line, DockConfiguration& to) {
  DockWidget* widget = find(to, *line.widget);
  if (!widget) return;
  DockWidget changed = *widget;
  if (line.value) {
    changed.options.insert(*line.key, *line.value);
  } else {
    changed.options.remove(*line.key);
  }
  try {
    *widget = DockConfiguration::validated(changed);
  } catch (const DomainError&) {
    // The document would be refused with it.
  }
}

}  // namespace

QList<ContentLine> ContentLine::between(const DockConfiguration& before, const DockConfiguration& after) {
  QList<ContentLine> lines;
  if (before.profiles != after.profiles) {
    QHash<QUuid, const Options*> known;
    for (const DockProfile& profile : before.profiles) {
      for (const DockWidget& widget : profile.widgets) known.insert(widget.id, &widget.options);
    }
    // A widget that was taken away and put back is written whole: its older values may be among earlier lines.
    static const Options none;
    for (const DockProfile& profile : after.profiles) {
      for (const DockWidget& widget : profile.widgets) {
        addOptions(widget.id, *known.value(widget.id, &none), widget.options, lines);
      }
    }
  }
  if (before.todos != after.todos) appendTo(lines).todos = after.todos;
  if (before.shelf != after.shelf) appendTo(lines).shelf = after.shelf;
  return lines;
}

void ContentLine::apply(const QList<ContentLine>& lines, DockConfiguration& to) {
  for (const ContentLine& line : lines) {
    if (line.widget) applyOption(line, to);
    if (line.todos) to.todos = *line.todos;
    if (line.shelf) to.shelf = *line.shelf;
  }
}

QByteArray ContentLine::text() const { return RecordCodec::toBytes(*this) + '\n'; }

QList<ContentLine> ContentLine::parse(const QByteArray& text) {
  QList<ContentLine> lines;
  qsizetype from = 0;
  for (qsizetype end = 0; (end = text.indexOf('\n', from)) >= 0; from = end + 1) {
    try {
      const auto line = RecordCodec::fromBytes<ContentLine>(text.sliced(from, end - from));
      const bool isOption = line.widget && line.key;
      if (!isOption && !line.todos && !line.shelf) break;
      lines.append(line);
    } catch (const DomainError&) {
      break;
    }
  }
  return lines;
}

}  // namespace tarnwick
