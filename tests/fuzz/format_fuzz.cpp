// Feeds the reader of one format with what the fuzzer makes up.

#include "fuzz/formats/formats.h"

#include <QDir>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

const melovane::fuzz::Format& format()
{
    static const melovane::fuzz::Format kFormat = melovane::fuzz::MLV_FORMAT();
    return kFormat;
}

} // namespace

// The fuzzing engine's names: keep.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);

/// With MLV_SEEDS the folder of that name gets what the program's own writers make.
extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/)
{
    if (!qEnvironmentVariableIsSet("MLV_SEEDS")) {
        return 0;
    }
    const QDir folder(qEnvironmentVariable("MLV_SEEDS"));
    int number = 0;
    for (const QByteArray& bytes : format().seeds()) {
        QFile file(folder.filePath(QStringLiteral("own-%1").arg(++number, 2, 10, QChar(u'0'))));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            std::fprintf(stderr, "the seeds cannot be written\n");
            std::abort();
        }
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString fault =
        format().check(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
    if (!fault.isEmpty()) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(fault));
        std::abort();
    }
    return 0;
}
