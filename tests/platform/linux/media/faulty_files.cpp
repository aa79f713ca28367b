#include "faulty_files.h"

#include <sys/stat.h>
#include <sys/types.h>

#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <utility>

namespace melovane::test::faultyfiles {

namespace {

struct State
{
    bool armed = false;
    int count = 0;
    int at = 0;
    Kind kind = Kind::Fails;
    int error = 0;
    std::function<void()> between;
};

State state;

/// True when the operation that is asked for now shall fail.
bool isFailing()
{
    if (!state.armed) {
        return false;
    }
    ++state.count;
    const bool reached =
        state.kind == Kind::Dies ? state.count >= state.at : state.count == state.at;
    if (state.at == 0 || !reached) {
        return false;
    }
    if (state.between) {
        state.armed = false;
        std::exchange(state.between, {})();
        state.armed = true;
        return false;
    }
    errno = state.error;
    return true;
}

/// A write that is torn: the program dies in it.
bool isTorn()
{
    return state.armed && state.kind == Kind::Dies && !state.between && state.count + 1 == state.at;
}

} // namespace

void arm(int at, Kind kind, int error)
{
    state = {true, 0, at, kind, error, {}};
}

void interrupt(int at, std::function<void()> between)
{
    state = {true, 0, at, Kind::Fails, 0, std::move(between)};
}

int disarm()
{
    const int count = state.count;
    state = {};
    return count;
}

} // namespace melovane::test::faultyfiles

using melovane::test::faultyfiles::isFailing;
using melovane::test::faultyfiles::isTorn;

// Names of the linker: keep.
// NOLINTBEGIN(bugprone-reserved-identifier)
#define MLV_FAULTY(result, name, parameters, arguments)                                            \
    result __real_##name parameters;                                                               \
    result __wrap_##name parameters;                                                               \
    result __wrap_##name parameters                                                                \
    {                                                                                              \
        return isFailing() ? result{-1} : __real_##name arguments;                                 \
    }

extern "C" {
MLV_FAULTY(int, lstat, (const char* path, struct stat* facts), (path, facts))
MLV_FAULTY(int, fstat, (int file, struct stat* facts), (file, facts))
MLV_FAULTY(ssize_t, pread, (int file, void* to, size_t size, off_t at), (file, to, size, at))
MLV_FAULTY(int, fsync, (int file), (file))
MLV_FAULTY(int, fdatasync, (int file), (file))
MLV_FAULTY(int, syncfs, (int file), (file))
MLV_FAULTY(int, fallocate, (int file, int mode, off_t at, off_t size), (file, mode, at, size))
MLV_FAULTY(int, ftruncate, (int file, off_t size), (file, size))
MLV_FAULTY(int, fchown, (int file, uid_t user, gid_t group), (file, user, group))
MLV_FAULTY(int, fchmod, (int file, mode_t mode), (file, mode))
MLV_FAULTY(int, futimens, (int file, const struct timespec* times), (file, times))
MLV_FAULTY(ssize_t, flistxattr, (int file, char* names, size_t size), (file, names, size))
MLV_FAULTY(int,
           linkat,
           (int one, const char* from, int other, const char* to, int flags),
           (one, from, other, to, flags))
MLV_FAULTY(int, rename, (const char* from, const char* to), (from, to))
MLV_FAULTY(int, unlink, (const char* path), (path))
MLV_FAULTY(int, mkdir, (const char* path, mode_t mode), (path, mode))

ssize_t __real_pwrite(int file, const void* from, size_t size, off_t at);
ssize_t __wrap_pwrite(int file, const void* from, size_t size, off_t at);

ssize_t __wrap_pwrite(int file, const void* from, size_t size, off_t at)
{
    if (isTorn()) {
        // A kernel or a disk tears at blocks of the file.
        const off_t end = (at + off_t(size / 2)) / 512 * 512;
        (void)__real_pwrite(file, from, size_t(end > at ? end - at : 0), at);
    }
    return isFailing() ? -1 : __real_pwrite(file, from, size, at);
}

int __real_open(const char* path, int flags, ...);
int __wrap_open(const char* path, int flags, ...);

int __wrap_open(const char* path, int flags, ...)
{
    va_list list;
    va_start(list, flags);
    const auto mode = va_arg(list, mode_t);
    va_end(list);
    return isFailing() ? -1 : __real_open(path, flags, mode);
}
}
// NOLINTEND(bugprone-reserved-identifier)
