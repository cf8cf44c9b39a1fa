#include "platform/docks/module/SettingsSchemas.h"

#define G_SETTINGS_ENABLE_BACKEND
#include <gio/gsettingsbackend.h>

#include <QFile>
#include <chrono>
#include <future>
#include <thread>

namespace tarnwick {

SettingsSchemas::SettingsSchemas(const QStringList& folders) {
  GSettingsSchemaSource* const machine = g_settings_schema_source_get_default();
  if (machine) sources_.emplace_back(g_settings_schema_source_ref(machine));
  for (const QString& folder : folders) {
    SchemaSource source(
        g_settings_schema_source_new_from_directory(QFile::encodeName(folder).constData(), nullptr, FALSE, nullptr));
    if (source) sources_.push_back(std::move(source));
  }
}

Schema SettingsSchemas::find(const QString& schema) const {
  for (const SchemaSource& source : sources_) {
    Schema found(g_settings_schema_source_lookup(source.get(), schema.toUtf8().constData(), TRUE));
    if (found) return found;
  }
  return nullptr;
}

OpenSettings SettingsSchemas::open(const QString& schema, const QString& path) const {
  Schema found = find(schema);
  if (!found) return {};
  // The library ends the process over a path that does not fit.
  const QString fixed = QString::fromUtf8(g_settings_schema_get_path(found.get()));
  const bool isPath = path.startsWith(u'/') && path.endsWith(u'/') && !path.contains(QLatin1StringView("//"));
  if (fixed.isEmpty() ? !isPath : !path.isEmpty() && path != fixed) return {};
  const QByteArray place = (fixed.isEmpty() ? path : fixed).toUtf8();
  Settings settings(g_settings_new_full(found.get(), nullptr, place.constData()));
  return {std::move(found), std::move(settings)};
}

bool OpenSettings::has(const QString& key) const {
  return schema_ && g_settings_schema_has_key(schema_.get(), key.toUtf8().constData());
}

std::optional<QString> OpenSettings::userValue(const QString& key) const {
  if (!has(key)) return std::nullopt;
  const Variant value(g_settings_get_user_value(settings_.get(), key.toUtf8().constData()));
  if (!value) return std::nullopt;
  const std::unique_ptr<char, Release<g_free>> text(g_variant_print(value.get(), FALSE));
  return QString::fromUtf8(text.get());
}

Variant OpenSettings::parse(const QString& key, const QString& text) const {
  const SchemaKey known(g_settings_schema_get_key(schema_.get(), key.toUtf8().constData()));
  Variant value(g_variant_parse(g_settings_schema_key_get_value_type(known.get()), text.toUtf8().constData(), nullptr,
                                nullptr, nullptr));
  if (value && !g_settings_schema_key_range_check(known.get(), value.get())) return nullptr;
  return value;
}

bool OpenSettings::set(const QString& key, const std::optional<QString>& text) const {
  const QByteArray name = key.toUtf8();
  if (!has(key) || !g_settings_is_writable(settings_.get(), name.constData())) return false;
  if (!text) {
    g_settings_reset(settings_.get(), name.constData());
    return true;
  }
  const Variant value = parse(key, *text);
  return value && g_settings_set_value(settings_.get(), name.constData(), value.get());
}

bool OpenSettings::holds(const QString& key, const std::optional<QString>& text) const {
  if (!has(key)) return false;
  const Variant now(g_settings_get_user_value(settings_.get(), key.toUtf8().constData()));
  if (!now || !text) return !now && !text;
  const Variant wanted = parse(key, *text);
  return wanted && g_variant_equal(now.get(), wanted.get());
}

QStringList OpenSettings::texts(const QString& key) const {
  QStringList result;
  if (!has(key)) return result;
  const std::unique_ptr<gchar*, Release<g_strfreev>> list(
      g_settings_get_strv(settings_.get(), key.toUtf8().constData()));
  for (gchar** text = list.get(); text && *text; ++text) result << QString::fromUtf8(*text);
  return result;
}

bool settingsAreKept() {
  const std::unique_ptr<GSettingsBackend, Release<g_object_unref>> backend(g_settings_backend_get_default());
  return QLatin1StringView(G_OBJECT_TYPE_NAME(backend.get())) != QLatin1StringView("GMemorySettingsBackend");
}

bool settingsReachService(int milliseconds) {
  // The library waits for its service without a limit, so it does on a thread that need not be waited for.
  auto done = std::make_shared<std::promise<void>>();
  std::future<void> reached = done->get_future();
  std::thread([done] {
    g_settings_sync();
    done->set_value();
  }).detach();
  return reached.wait_for(std::chrono::milliseconds(milliseconds)) == std::future_status::ready;
}

}  // namespace tarnwick
