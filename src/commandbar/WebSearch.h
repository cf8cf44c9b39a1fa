#pragma once

#include <QLocale>
#include <QString>
#include <QUrl>
#include <span>

namespace tarnwick {

/// Where the web is searched. Nothing is sent before the user opens the address that this makes.
///
/// A choice is the id of an engine or an address of the user's own with "%s" in the place of the query.
struct WebSearch {
  struct Engine {
    const char* id;
    const char* name;
    const char* address;  ///< "%s" stands for the query, "%l" for the user's language.
  };

  /// The first is what is asked where nothing was chosen.
  static std::span<const Engine> engines();

  /// The address that asks for a query. A choice that is neither known nor a valid address is as none.
  static QUrl address(const QString& choice, const QString& query, const QLocale& locale = QLocale());
  /// Whose answer that is, for the eye.
  static QString host(const QString& choice, const QLocale& locale = QLocale());

  /// What is wrong with an address of the user's own, as a finished sentence; empty where it can be used: https, with a
  /// host, exactly one "%s" behind it, no user or password, and no more than 500 characters.
  static QString problemWith(const QString& address);
};

}  // namespace tarnwick
