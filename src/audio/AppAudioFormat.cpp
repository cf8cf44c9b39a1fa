#include "audio/AppAudioFormat.h"

#include <QCoreApplication>
#include <cmath>

#include "base/DomainError.h"

namespace tarnwick {
namespace {

struct HardwareWords {
  Q_DECLARE_TR_FUNCTIONS(AppAudioHardware)
};

}  // namespace

bool AppAudioFormat::supported(const AudioStreamBasicDescription& description, bool input) {
  using Format = AudioStreamBasicDescription;
  constexpr quint32 kSampleBytes = 4;
  const quint32 mostChannels = input ? 2 : 8;
  const quint32 channels = description.mChannelsPerFrame;
  if (description.mFormatID != Format::kLinearPcm || description.mBitsPerChannel != 8 * kSampleBytes) return false;
  if ((description.mFormatFlags & (Format::kIsFloat | Format::kIsBigEndian)) != Format::kIsFloat) return false;
  if (channels < 1 || channels > mostChannels) return false;
  const bool isApart = (description.mFormatFlags & Format::kIsNonInterleaved) != 0;
  if (description.mBytesPerFrame != (isApart ? kSampleBytes : kSampleBytes * channels)) return false;
  if (description.mFramesPerPacket != 1 || description.mBytesPerPacket != description.mBytesPerFrame) return false;
  return description.mSampleRate >= kLeastRate && description.mSampleRate <= kMostRate;
}

void AppAudioHardware::check(AudioHardware::Status status, const char* operation) {
  if (status == 0) return;
  throw DomainError::invalid(
      HardwareWords::tr("%1 failed (%2). Check System Audio Recording access and the selected output device.")
          .arg(HardwareWords::tr(operation), QString::number(status)));
}

QString AppAudioHardware::identity(AudioHardware& hardware, quint32 device) {
  const QString identity =
      read(hardware.identity(device), QT_TRANSLATE_NOOP("AppAudioHardware", "Read audio identity"));
  if (identity.isNull()) throw DomainError::invalid(HardwareWords::tr("The audio device did not provide an identity."));
  return identity;
}

}  // namespace tarnwick
