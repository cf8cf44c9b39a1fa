#include "views/library/EditorFields.h"

#include <QCoreApplication>
#include <algorithm>

#include "services/ProviderTable.h"
#include "views/families/Rooms.h"
#include "widgets/LibraryWords.h"
#include "widgets/catalog/Options.h"

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
  if (option.onlyIn) field.onlyIn = QString::fromLatin1(option.onlyIn);
  if (*option.fault) field.fault = EditorFieldsWords::tr(option.fault);
  return field;
}

/// What is asked about an address of the user's own, and about no service.
bool isOfAddress(const QString& key) {
  return key == option::endpoint || key == option::field || key == option::metricLabel || key == option::prefix ||
         key == option::suffix;
}

/// What the service wants to know, and where its credential is made.
QList<EditorField> fieldsOf(const Provider& provider, const QString& kind) {
  QList<EditorField> fields;
  for (const ProviderField& each : provider.fields(kind)) {
    EditorField field;
    field.key = each.key;
    field.label = each.label;
    field.placeholder = each.placeholder;
    field.help = each.help;
    field.value = each.values.join(u',');
    field.words = each.words.join(u',');
    field.usual = each.usual;
    if (!each.values.isEmpty()) field.shape = each.values.size() == 1 ? FieldShape::Switch : FieldShape::Choice;
    field.onlyIn = value::native;
    fields << field;
  }
  EditorField page;
  page.shape = FieldShape::Page;
  page.label = provider.credential.label;
  page.help = provider.credential.explanation;
  const ProviderCredential& credential = provider.credential;
  page.pageOf = [own = credential.pageOf, shared = credential.page](const DockWidget& edited) {
    return own ? own(edited) : shared;
  };
  page.onlyIn = value::native;
  return fields << page;
}

}  // namespace

QList<EditorField> EditorFields::of(const QString& kind) {
  const Provider* provider = providerFor(kind);
  QList<EditorField> fields;
  for (const WidgetOption& declared : Rooms::options(kind)) {
    EditorField field = fieldOf(declared);
    if (provider && isOfAddress(field.key)) field.onlyIn = QString();
    const bool isConnection = provider && field.key == option::connectionMode;
    if (isConnection) field.help = provider->explanation(kind);
    fields << field;
    if (isConnection) fields << fieldsOf(*provider, kind);
  }
  return fields;
}

bool EditorFields::isEditable(const QString& kind) { return Rooms::hasForm(kind); }

}  // namespace tarnwick
