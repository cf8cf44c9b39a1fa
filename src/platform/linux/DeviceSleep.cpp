#include "platform/linux/DeviceSleep.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>

#include "platform/linux/KernelFile.h"

namespace tarnwick {
namespace {

constexpr std::size_t kWord = 64;

bool saysSuspended(const std::string& device) {
  KernelFile status(device + "/power/runtime_status");
  const auto word = status.read(kWord);
  return word && word->starts_with("suspended");
}

}  // namespace

bool DeviceSleep::isAsleep(const std::string& folder) {
  return saysSuspended(folder) || saysSuspended(folder + "/device");
}

bool DeviceSleep::isVolumeAsleep(const std::string& root, const std::string& folder) {
  struct stat facts {};
  if (::stat(folder.c_str(), &facts) != 0) return false;
  const std::string block = root + "sys/dev/block/" + std::to_string(major(facts.st_dev)) + ':' +
                            std::to_string(minor(facts.st_dev));
  // A part of a disk lies in the disk's folder.
  return saysSuspended(block + "/device") || saysSuspended(block + "/../device");
}

}  // namespace tarnwick
