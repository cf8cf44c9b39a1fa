#pragma once

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <csignal>

#include "base/DomainError.h"

namespace tarnwick {

/// The sentence with which `work` fails; empty when it doesn't.
template <class Work>
std::string failureOf(Work work) {
  try {
    work();
  } catch (const DomainError& failure) {
    return failure.message().toStdString();
  }
  return {};
}

/// Writes a file in place, with the folders above it.
inline void writeFile(const QString& path, const QByteArray& data) {
  QDir().mkpath(QFileInfo(path).path());
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << path.toStdString();
  ASSERT_EQ(file.write(data), data.size());
}

/// While it lives, permissions bind even when the tests run as root.
class AsPlainUser {
 public:
  explicit AsPlainUser(const QString& owned) : root_(::geteuid() == 0) {
    constexpr uid_t kNobody = 65534;
    if (!root_) return;
    EXPECT_EQ(::chown(QFile::encodeName(owned).constData(), kNobody, kNobody), 0);
    EXPECT_EQ(::seteuid(kNobody), 0);
  }
  Q_DISABLE_COPY_MOVE(AsPlainUser)
  ~AsPlainUser() { EXPECT_TRUE(!root_ || ::seteuid(0) == 0); }

 private:
  bool root_;
};

/// While it lives, files can't grow beyond a size: the nearest thing to a full disk.
class AsFullDisk {
 public:
  explicit AsFullDisk(rlim_t bytes) {
    ::getrlimit(RLIMIT_FSIZE, &before_);
    signal_ = ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limited{bytes, before_.rlim_max};
    EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &limited), 0);
  }
  Q_DISABLE_COPY_MOVE(AsFullDisk)
  ~AsFullDisk() {
    ::setrlimit(RLIMIT_FSIZE, &before_);
    ::signal(SIGXFSZ, signal_);
  }

 private:
  rlimit before_{};
  void (*signal_)(int) = nullptr;
};

/// A folder of its own for each test.
class FolderTest : public testing::Test {
 protected:
  QString at(const QString& name) const { return folder_.filePath(name); }
  QByteArray encoded(const QString& name) const { return QFile::encodeName(at(name)); }
  QStringList entries() const {
    return QDir(folder_.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
  }
  void put(const QString& name, const QByteArray& data) const { writeFile(at(name), data); }
  std::string content(const QString& name) const {
    QFile file(at(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "(unreadable)";
  }
  mode_t mode(const QString& name) const {
    struct stat status {};
    ::stat(encoded(name).constData(), &status);
    return status.st_mode & 07777;
  }
  void setMode(const QString& name, mode_t mode) const { ASSERT_EQ(::chmod(encoded(name).constData(), mode), 0); }

  QTemporaryDir folder_;
};

}  // namespace tarnwick
