#include "platform/linux/DeviceSleep.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>

#include "platform/linux/KernelFile.h"

namespace tarnwick {
namespace {

constexpr std::size_t kWord = 64;

bool saysSuspended(const std::string& device) {
  KernelFile status(device + "/power/runtime_status");
  const auto word = status.read(kWord);
  return word && word->starts_with("suspended");
}

/// Whether the disk of a block device sleeps. What is put together from others (an encrypted or a logical volume, a
/// RAID) sleeps when one of them does.
bool isDiskAsleep(const std::string& block, int depth = 0) {
  constexpr int kDeepest = 8;
  // A part of a disk lies in the disk's folder.
  if (saysSuspended(block + "/device") || saysSuspended(block + "/../device")) return true;
  std::error_code ignored;
  for (const auto& part : std::filesystem::directory_iterator(block + "/slaves", ignored))
    if (depth < kDeepest && isDiskAsleep(part.path().string(), depth + 1)) return true;
  return false;
}

/// The name of the block device that is mounted under a number of the kernel's own, as those of btrfs are; empty where
/// there is none.
std::string mountedDevice(const std::string& root, const std::string& number) {
  std::ifstream mounts(root + "proc/self/mountinfo");
  for (std::string line; std::getline(mounts, line);) {
    std::istringstream before(line.substr(0, line.find(" - ")));
    std::string id, parent, device;
    before >> id >> parent >> device;
    const auto separator = line.find(" - ");
    if (device != number || separator == std::string::npos) continue;
    std::istringstream after(line.substr(separator + 3));
    std::string type, source;
    after >> type >> source;
    std::error_code unresolved;
    const std::filesystem::path real = std::filesystem::canonical(source, unresolved);
    return (unresolved ? std::filesystem::path(source) : real).filename().string();
  }
  return {};
}

}  // namespace

bool DeviceSleep::isAsleep(const std::string& folder) {
  return saysSuspended(folder) || saysSuspended(folder + "/device");
}

bool DeviceSleep::isVolumeAsleep(const std::string& root, const std::string& folder) {
  struct stat facts {};
  if (::stat(folder.c_str(), &facts) != 0) return false;
  const std::string number = std::to_string(major(facts.st_dev)) + ':' + std::to_string(minor(facts.st_dev));
  const std::string block = root + "sys/dev/block/" + number;
  std::error_code ignored;
  if (std::filesystem::exists(block, ignored)) return isDiskAsleep(block);
  const std::string device = mountedDevice(root, number);
  return !device.empty() && isDiskAsleep(root + "sys/class/block/" + device);
}

}  // namespace tarnwick
