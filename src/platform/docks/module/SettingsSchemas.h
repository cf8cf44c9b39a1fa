#pragma once

#include <gio/gio.h>

#include <QString>
#include <QStringList>
#include <memory>
#include <optional>
#include <vector>

namespace tarnwick {

template <auto release>
struct Release {
  template <class T>
  void operator()(T* object) const {
    release(object);
  }
};
using SchemaSource = std::unique_ptr<GSettingsSchemaSource, Release<g_settings_schema_source_unref>>;
using Schema = std::unique_ptr<GSettingsSchema, Release<g_settings_schema_unref>>;
using SchemaKey = std::unique_ptr<GSettingsSchemaKey, Release<g_settings_schema_key_unref>>;
using Settings = std::unique_ptr<GSettings, Release<g_object_unref>>;
using Variant = std::unique_ptr<GVariant, Release<g_variant_unref>>;

/// The settings at one place. Every operation minds keys that this version of the schema does not have.
class OpenSettings {
 public:
  OpenSettings() = default;
  OpenSettings(Schema schema, Settings settings) : schema_(std::move(schema)), settings_(std::move(settings)) {}

  explicit operator bool() const { return settings_ != nullptr; }
  bool has(const QString& key) const;
  /// In GVariant's text form; none where the user has set nothing.
  std::optional<QString> userValue(const QString& key) const;
  /// Sets, or unsets without a value. False for a value that the key cannot take, and where the key is locked.
  bool set(const QString& key, const std::optional<QString>& text) const;
  /// Whether the user's value is this one.
  bool holds(const QString& key, const std::optional<QString>& text) const;
  QStringList texts(const QString& key) const;

 private:
  Variant parse(const QString& key, const QString& text) const;

  Schema schema_;
  Settings settings_;
};

/// The schemas of the machine and of some folders. Asking for one that is missing is no failure.
class SettingsSchemas {
 public:
  explicit SettingsSchemas(const QStringList& folders);

  /// Empty where there is no such schema, or the path does not fit it.
  OpenSettings open(const QString& schema, const QString& path) const;
  bool has(const QString& schema) const { return find(schema) != nullptr; }

 private:
  Schema find(const QString& schema) const;

  std::vector<SchemaSource> sources_;
};

/// Whether changes are kept at all: without its usual store the library forgets them at the end of the process.
bool settingsAreKept();

/// Waits until the settings' service has taken all changes; false when it does not within `milliseconds`.
bool settingsReachService(int milliseconds);

}  // namespace tarnwick
