#pragma once

#include <QCoroTask>
#include <exception>
#include <stop_token>

namespace tarnwick {

/// A place on the earth, in degrees.
struct Coordinate {
  double latitude = 0;
  double longitude = 0;

  bool operator==(const Coordinate&) const = default;
};

/// Why it is not known where the machine is.
class LocationFailure : public std::exception {
 public:
  enum class Reason {
    Disabled,  ///< No service tells it, or none may.
    Refused,   ///< It is not told to this program.
    TimedOut
  };

  explicit LocationFailure(Reason reason) : reason_(reason) {}
  Reason reason() const { return reason_; }
  const char* what() const noexcept override { return "The location is not known."; }

 private:
  Reason reason_;
};

/// Where the machine is, as the desktop finds it out. To be asked only for something that the user chose: the desktop
/// may ask the user whether it may tell. Main thread only.
class LocationSource {
 public:
  LocationSource() = default;
  Q_DISABLE_COPY_MOVE(LocationSource)
  virtual ~LocationSource() = default;

  /// Finds it once, in fifteen seconds at most, and leaves nothing running. Throws LocationFailure, and Cancelled as
  /// soon as `stop` is requested. May outlive this object.
  virtual QCoro::Task<Coordinate> locate(std::stop_token stop) = 0;
};

}  // namespace tarnwick
