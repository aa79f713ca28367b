#include "fuzz/m3u_check.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

// The fuzzing engine's name: keep.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static melovane::fuzz::M3uCheck check;
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const QString fault = check.check(bytes);
    if (!fault.isEmpty()) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(fault));
        std::abort();
    }
    return 0;
}
