#include <QtGlobal>

#include "platform/sound/module/PulseOutput.h"

/// The module's entry point; the caller owns what it gives.
extern "C" Q_DECL_EXPORT tarnwick::SoundOutput* tarnwickSoundOutput(const QString& address,
                                                                    tarnwick::SoundOutput::Changed changed) {
  return new tarnwick::PulseOutput(address.toUtf8(), std::move(changed));
}
