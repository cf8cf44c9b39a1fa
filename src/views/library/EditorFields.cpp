#include "views/library/EditorFields.h"

#include <QCoreApplication>

#include "views/families/Rooms.h"
#include "widgets/LibraryWords.h"

namespace tarnwick {

namespace {

struct EditorFieldsWords {
  Q_DECLARE_TR_FUNCTIONS(WidgetEditor)
};

QString translated(const char* text) { return *text ? LibraryWords::tr(text) : QString(); }

EditorField fieldOf(const WidgetOption& option) {
  EditorField field;
  field.key = option.key;
  field.shape = option.shape;
  field.label = translated(option.label);
  field.placeholder = option.usualPath ? option.usualPath() : translated(option.placeholder);
  field.help = translated(option.help);
  field.value = QString::fromLatin1(option.value);
  field.words = translated(option.words);
  field.usual = option.usual;
  field.least = option.least;
  field.most = option.most;
  field.isLater = option.isLater;
  if (*option.fault) field.fault = EditorFieldsWords::tr(option.fault);
  return field;
}

}  // namespace

QList<EditorField> EditorFields::of(const QString& kind) {
  QList<EditorField> fields;
  for (const WidgetOption& option : Rooms::options(kind)) fields.append(fieldOf(option));
  return fields;
}

bool EditorFields::isEditable(const QString& kind) { return Rooms::hasForm(kind); }

}  // namespace tarnwick
