#pragma once

#include <QtGlobal>
#include <array>
#include <cstddef>

namespace tarnwick {

/// A call to a system management controller: 80 bytes there and 80 back, in the layout of SmcTemperatures.
using SmcRecord = std::array<quint8, 80>;

/// The way to a system management controller.
class SmcTransport {
 public:
  virtual ~SmcTransport() = default;

  /// False where there is no controller or it cannot be opened.
  virtual bool open() = 0;
  /// One call. 0 is success; `answered` becomes the number of bytes that came back.
  virtual int call(const SmcRecord& question, SmcRecord& answer, std::size_t& answered) = 0;
  /// Follows every `open` that was true.
  virtual void close() = 0;
};

}  // namespace tarnwick
