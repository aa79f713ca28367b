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
    QString fault = melovane::fuzz::M3uCheck::checkText(bytes);
    // One of some goes the whole way; always the same ones, so that a find can be repeated.
    if (fault.isEmpty() && qChecksum(bytes) % 64 == 0) {
        fault = check.checkImport(bytes);
    }
    if (!fault.isEmpty()) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(fault));
        std::abort();
    }
    return 0;
}
