// Feeds the decoder of message packets with what the fuzzer makes up.

#include "platform/linux/message_packet.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace melovane::linuxmessages;
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const auto packet = decode(bytes);
    if (packet && encode(*packet) != bytes) {
        std::abort();
    }
    return 0;
}
