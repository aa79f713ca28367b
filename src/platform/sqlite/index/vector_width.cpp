#include "platform/sqlite/index/vector_width.h"

#include <cstdlib>
#include <string_view>

namespace melovane::sqlite {

namespace {

#ifdef __x86_64__
bool hasAvx2()
{
    return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") &&
           __builtin_cpu_supports("bmi2") && __builtin_cpu_supports("popcnt");
}
#endif

VectorWidth widthOfRun()
{
    const char* const wanted = std::getenv("MLV_VECTOR");
    const std::string_view name = wanted == nullptr ? "" : wanted;
    VectorWidth result = VectorWidth::Plain;
    for (const VectorWidth width : vectorWidths()) {
        const bool isWanted = width == VectorWidth::Sse2 ? name != "plain" : name.empty();
        result = isWanted ? width : result;
    }
    return result;
}

} // namespace

std::vector<VectorWidth> vectorWidths()
{
    std::vector<VectorWidth> widths{VectorWidth::Plain};
#ifdef __x86_64__
    widths.push_back(VectorWidth::Sse2);
    if (hasAvx2()) {
        widths.push_back(VectorWidth::Avx2);
    }
#endif
    return widths;
}

VectorWidth vectorWidth()
{
    static const VectorWidth width = widthOfRun();
    return width;
}

} // namespace melovane::sqlite
