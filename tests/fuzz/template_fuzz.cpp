// Feeds the templates of exports with what the fuzzer makes up.

#include "fuzz/template_check.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString trouble = melovane::fuzz::checkTemplate(
        QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
    if (!trouble.isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(trouble));
        std::abort();
    }
    return 0;
}
