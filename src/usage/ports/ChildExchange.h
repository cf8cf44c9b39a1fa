#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <stop_token>

namespace tarnwick {

/// A program that is started to be asked something over its input and output, and ended afterwards: it and all that it
/// started end with this object, and with our process however that ends. What it writes to its error output is thrown
/// away. Used by one thread, which may not be the main one.
class ChildExchange {
 public:
  enum class Reading {
    Got,
    Ended,  ///< It closed its output.
    TimedOut,
    Cancelled,
  };

  virtual ~ChildExchange() = default;

  /// False where it does not listen any more.
  virtual bool write(const QByteArray& bytes) = 0;
  /// Waits for what comes next, at most so many bytes of it and so many milliseconds, and puts it behind `bytes`.
  virtual Reading read(QByteArray& bytes, qsizetype most, int milliseconds) = 0;
};

/// Starts such programs; null where that is not possible. Any thread but the main one.
using StartChild = std::function<std::unique_ptr<ChildExchange>(const QString& program, const QStringList& arguments,
                                                                std::stop_token stop)>;

}  // namespace tarnwick
