#pragma once

#include <QCoreApplication>

namespace tarnwick {

/// What is said of what is played.
struct MediaWords {
  Q_DECLARE_TR_FUNCTIONS(MediaWords)
};

}  // namespace tarnwick
