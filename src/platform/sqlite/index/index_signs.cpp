#include "platform/sqlite/index/index_signs.h"

namespace melovane::sqlite {

namespace {

constexpr quint64 kFigureSign = 1ULL << 26;
constexpr quint64 kForeignSign = 1ULL << 27;

/// The bits of pairs.
constexpr unsigned kFirstPair = 28;
constexpr unsigned kPairs = 64 - kFirstPair;

quint64 signOf(unsigned char letter)
{
    if (bitOf(letter) < 26) {
        return 1ULL << bitOf(letter);
    }
    if (letter >= '0' && letter <= '9') {
        return kFigureSign;
    }
    return letter >= 0x80 ? kForeignSign : 0;
}

quint64 signOfPair(unsigned char first, unsigned char second)
{
    return 1ULL << (kFirstPair + (first * 31U + second * 7U) % kPairs);
}

} // namespace

quint64 signsOf(std::string_view text)
{
    quint64 signs = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto letter = static_cast<unsigned char>(text[i]);
        signs |= signOf(letter);
        if (i > 0) {
            signs |= signOfPair(static_cast<unsigned char>(text[i - 1]), letter);
        }
    }
    return signs;
}

} // namespace melovane::sqlite
