#include <dlfcn.h>
#include <gtest/gtest.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <pthread.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <new>

#include "audio/GainRenderer.h"

// A sanitiser has allocation functions of its own and calls the system when it likes.
#ifndef __SANITIZE_ADDRESS__

namespace {

/// What the audio thread must not do, counted while it is set.
thread_local bool isCounted = false;
thread_local int forbidden = 0;

void count() {
  if (isCounted) ++forbidden;
}

}  // namespace

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t items, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* memory);

void* malloc(std::size_t size) {
  count();
  return __libc_malloc(size);
}
void* calloc(std::size_t items, std::size_t size) {
  count();
  return __libc_calloc(items, size);
}
void* realloc(void* memory, std::size_t size) {
  count();
  return __libc_realloc(memory, size);
}
void* aligned_alloc(std::size_t alignment, std::size_t size) {
  count();
  return __libc_memalign(alignment, size);
}
void free(void* memory) {
  count();
  __libc_free(memory);
}
int pthread_mutex_lock(pthread_mutex_t* mutex) {
  count();
  static const auto real = reinterpret_cast<int (*)(pthread_mutex_t*)>(::dlsym(RTLD_NEXT, "pthread_mutex_lock"));
  return real(mutex);
}

}  // extern "C"

void* operator new(std::size_t size) {
  count();
  if (void* memory = __libc_malloc(size)) return memory;
  throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  count();
  return __libc_malloc(size);
}
void operator delete(void* memory) noexcept {
  count();
  __libc_free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  count();
  __libc_free(memory);
}

namespace tarnwick {
namespace {

/// From here on this thread may end its process and ask the system for nothing else.
bool refuseSystemCalls() {
  std::array filter{
      sock_filter BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
      sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_exit_group, 0, 1),
      sock_filter BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
      sock_filter BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
  };
  const sock_fprog program{filter.size(), filter.data()};
  return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

/// What a device calls again and again: every path, with and without faults. How often something forbidden was done.
int renderEverything(tw_gain_state* gain) {
  constexpr std::uint32_t kFrames = 256;
  std::array<float, 2 * kFrames> in{};
  std::array<float, 8 * kFrames> out{};
  in[3] = std::numeric_limits<float>::infinity();
  std::array<AudioBuffer, 2> sides{AudioBuffer{1, kFrames * 4, in.data()}, {1, kFrames * 4, in.data() + kFrames}};
  std::array<AudioBuffer, 2> outSides{AudioBuffer{1, kFrames * 4, out.data()}, {1, kFrames * 4, out.data() + kFrames}};
  AudioBuffer pair{2, kFrames * 8, in.data()};
  AudioBuffer outPair{2, kFrames * 8, out.data()};
  AudioBuffer surround{8, kFrames * 32, out.data()};
  AudioBuffer broken{3, 7, out.data()};
  const std::array inputs{AudioBufferList{2, sides.data()}, AudioBufferList{1, &pair}, AudioBufferList{1, sides.data()},
                          AudioBufferList{}};
  const std::array outputs{AudioBufferList{2, outSides.data()}, AudioBufferList{1, &outPair},
                           AudioBufferList{1, &surround}, AudioBufferList{1, outSides.data()},
                           AudioBufferList{1, &broken}};
  forbidden = 0;
  isCounted = true;
  for (const float target : {1.F, 0.F, 0.5F, std::numeric_limits<float>::quiet_NaN()})
    for (const AudioBufferList& input : inputs)
      for (const AudioBufferList& output : outputs) {
        tw_gain_set(gain, target);
        tw_gain_render(gain, &input, &output);
      }
  isCounted = false;
  return tw_gain_faulted(gain) ? forbidden : -1;
}

/// In a real-time thread where this user may have one.
void* renderAsDevice(void* gain) {
  const sched_param first{1};
  ::pthread_setschedparam(::pthread_self(), SCHED_FIFO, &first);
  if (!refuseSystemCalls()) ::_exit(2);
  ::_exit(renderEverything(static_cast<tw_gain_state*>(gain)) == 0 ? 0 : 1);
}

TEST(GainRealTime, NeverAsksForMemoryLocksOrTheSystem) {
  isCounted = true;
  forbidden = 0;
  tw_gain_state* gain = tw_gain_create();
  isCounted = false;
  ASSERT_EQ(forbidden, 1) << "what is counted is not seen";
  tw_gain_prepare(gain, 0, 48'000);
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    pthread_t thread;
    if (::pthread_create(&thread, nullptr, &renderAsDevice, gain) == 0) ::pthread_join(thread, nullptr);
    ::_exit(3);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_FALSE(WIFSIGNALED(status)) << "the system was asked for something";
  EXPECT_EQ(WEXITSTATUS(status), 0);
  tw_gain_destroy(gain);
}

}  // namespace
}  // namespace tarnwick

#endif
