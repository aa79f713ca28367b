#include "platform/linux/crash_file.h"

#include "platform/linux/system_names.h"

#include <execinfo.h>
#include <fcntl.h>
#include <link.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <vector>

namespace melovane {

namespace {

constexpr std::array kSignals = {SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL};

/// A full stack leaves no room for the handler: it has its own.
constexpr size_t kStackBytes = size_t{128} * 1024;

constexpr int kMaxFrames = 64;

/// A part of the address room, with the bare name of what is loaded there.
struct Module
{
    std::uintptr_t begin = 0;
    std::uintptr_t end = 0;
    std::uintptr_t base = 0;
    std::array<char, 64> name{};
};

/// What the handler works with. It may neither take memory nor a lock, so all of it is made
/// beforehand.
struct Prepared
{
    std::array<char, 4096> path{};
    std::array<char, 256> program{};
    std::array<Module, 512> modules{};
    size_t moduleCount = 0;
    std::array<struct sigaction, kSignals.size()> former{};
};

Prepared prepared;

template <size_t Size> void take(std::array<char, Size>& place, const char* text)
{
    const size_t length = std::min(std::strlen(text), Size - 1);
    std::memcpy(place.data(), text, length);
    place[length] = '\0';
}

int noteModule(dl_phdr_info* info, size_t, void*)
{
    const char* const slash = std::strrchr(info->dlpi_name, '/');
    const char* const name = slash != nullptr ? slash + 1 : info->dlpi_name;
    for (int index = 0; index < info->dlpi_phnum; ++index) {
        const auto& part = info->dlpi_phdr[index];
        if (part.p_type != PT_LOAD || prepared.moduleCount == prepared.modules.size()) {
            continue;
        }
        Module& module = prepared.modules[prepared.moduleCount++];
        module.base = info->dlpi_addr;
        module.begin = info->dlpi_addr + part.p_vaddr;
        module.end = module.begin + part.p_memsz;
        take(module.name, *name == '\0' ? "program" : name);
    }
    return 0;
}

// ---- in the handler

void put(int file, const char* text)
{
    [[maybe_unused]] const ssize_t written = ::write(file, text, std::strlen(text));
}

void putNumber(int file, std::uintptr_t number, unsigned base, int digits = 1)
{
    std::array<char, 24> text{};
    size_t place = text.size() - 1;
    for (; (number > 0 || digits > 0) && place > 0; number /= base, --digits) {
        text[--place] = "0123456789abcdef"[number % base];
    }
    put(file, text.data() + place);
}

/// The moment in UTC: the C library's calendar takes locks.
void putMoment(int file, std::int64_t seconds)
{
    const std::int64_t day = seconds / 86400;
    const std::int64_t inDay = seconds % 86400;
    // Years begin in March here, so that the day that comes and goes is the last one.
    const std::int64_t shifted = day + 719468;
    const std::int64_t era = shifted / 146097;
    const std::int64_t ofEra = shifted % 146097;
    const std::int64_t year = (ofEra - ofEra / 1460 + ofEra / 36524 - ofEra / 146096) / 365;
    const std::int64_t ofYear = ofEra - (365 * year + year / 4 - year / 100);
    const std::int64_t month = (5 * ofYear + 2) / 153;
    const std::int64_t number = month < 10 ? month + 3 : month - 9;
    const auto part = [file](const char* before, std::int64_t value) {
        put(file, before);
        putNumber(file, std::uintptr_t(value), 10, 2);
    };
    putNumber(file, std::uintptr_t(year + era * 400 + (number <= 2 ? 1 : 0)), 10);
    part("-", number);
    part("-", ofYear - (153 * month + 2) / 5 + 1);
    part(" ", inDay / 3600);
    part(":", inDay / 60 % 60);
    part(":", inDay % 60);
    put(file, " UTC\n");
}

void putFrame(int file, void* address)
{
    const auto place = reinterpret_cast<std::uintptr_t>(address);
    for (size_t index = 0; index < prepared.moduleCount; ++index) {
        const Module& module = prepared.modules[index];
        if (place >= module.begin && place < module.end) {
            put(file, module.name.data());
            put(file, "+0x");
            putNumber(file, place - module.base, 16);
            put(file, "\n");
            return;
        }
    }
    put(file, "?\n");
}

void report(int number)
{
    const int file =
        ::open(prepared.path.data(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (file >= 0) {
        put(file, prepared.program.data());
        put(file, "\n");
        putMoment(file, ::time(nullptr));
        put(file, "Signal ");
        putNumber(file, std::uintptr_t(number), 10);
        put(file, "\n\n");
        std::array<void*, kMaxFrames> frames{};
        const int count = ::backtrace(frames.data(), kMaxFrames);
        for (int index = 0; index < count; ++index) {
            putFrame(file, frames[size_t(index)]);
        }
        ::fsync(file);
        ::close(file);
    }
    // Dies as it would have without us.
    std::signal(number, SIG_DFL);
    std::raise(number);
}

/// The stack of the handler; that of the process is left to it while it lives.
std::vector<char>& ownStack()
{
    static std::vector<char> stack(kStackBytes);
    return stack;
}

} // namespace

CrashFile::CrashFile(const QString& path, const QString& program)
{
    take(prepared.path, linuxnames::encode(path).constData());
    take(prepared.program, program.toUtf8().constData());
    prepared.moduleCount = 0;
    ::dl_iterate_phdr(noteModule, nullptr);
    // The first call loads a library, which the handler must not do.
    std::array<void*, 1> first{};
    ::backtrace(first.data(), int(first.size()));
    stack_t stack = {};
    stack.ss_sp = ownStack().data();
    stack.ss_size = ownStack().size();
    ::sigaltstack(&stack, nullptr);
    for (size_t index = 0; index < kSignals.size(); ++index) {
        struct sigaction action = {};
        action.sa_handler = report;
        action.sa_flags = SA_ONSTACK | SA_NODEFER;
        sigemptyset(&action.sa_mask);
        ::sigaction(kSignals[index], &action, &prepared.former[index]);
    }
}

CrashFile::~CrashFile()
{
    for (size_t index = 0; index < kSignals.size(); ++index) {
        ::sigaction(kSignals[index], &prepared.former[index], nullptr);
    }
    stack_t none = {};
    none.ss_flags = SS_DISABLE;
    ::sigaltstack(&none, nullptr);
}

} // namespace melovane
