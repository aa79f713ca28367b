#include "platform/db/db_error.h"
#include "platform/sqlite/functions/functions_value.h"

#include <cmath>
#include <cstdint>

namespace melovane::sqlite {

namespace {

/// Running count, mean and squared distance from it: exact enough for large numbers as well.
/// SQLite hands the memory out zeroed.
struct Spread
{
    qint64 count;
    double mean;
    double squares;
};

void addSpread(sqlite3_context* context, int, sqlite3_value** values)
{
    auto* spread = static_cast<Spread*>(sqlite3_aggregate_context(context, sizeof(Spread)));
    if (spread == nullptr || isNull(values[0])) {
        return;
    }
    const double number = argNumber(values[0]);
    ++spread->count;
    const double distance = number - spread->mean;
    spread->mean += distance / double(spread->count);
    spread->squares += distance * (number - spread->mean);
}

template <bool Population, bool Root> void endSpread(sqlite3_context* context)
{
    const auto* spread = static_cast<Spread*>(sqlite3_aggregate_context(context, 0));
    const qint64 needed = Population ? 1 : 2;
    if (spread == nullptr || spread->count < needed) {
        return;
    }
    const double divisor = double(Population ? spread->count : spread->count - 1);
    const double variance = spread->squares / divisor;
    giveNumber(context, Root ? std::sqrt(variance) : variance);
}

/// The value of one row of the group, kept until the end.
struct Kept
{
    sqlite3_value* value;
    bool taken;
};

template <bool Last> void keep(sqlite3_context* context, int, sqlite3_value** values)
{
    auto* kept = static_cast<Kept*>(sqlite3_aggregate_context(context, sizeof(Kept)));
    if (kept == nullptr || (kept->taken && !Last)) {
        return;
    }
    sqlite3_value_free(kept->value);
    kept->value = sqlite3_value_dup(values[0]);
    kept->taken = true;
}

void endKept(sqlite3_context* context)
{
    auto* kept = static_cast<Kept*>(sqlite3_aggregate_context(context, 0));
    if (kept != nullptr && kept->value != nullptr) {
        sqlite3_result_value(context, kept->value);
        sqlite3_value_free(kept->value);
        kept->value = nullptr;
    }
}

} // namespace

void registerAggregates(sqlite3* connection)
{
    struct Aggregate
    {
        const char* name;
        void (*step)(sqlite3_context*, int, sqlite3_value**);
        void (*end)(sqlite3_context*);
    };

    constexpr Aggregate kAggregates[] = {
        {"mlv_stdev", addSpread, endSpread<false, true>},
        {"mlv_stdevp", addSpread, endSpread<true, true>},
        {"mlv_var", addSpread, endSpread<false, false>},
        {"mlv_varp", addSpread, endSpread<true, false>},
        {"mlv_first", keep<false>, endKept},
        {"mlv_last", keep<true>, endKept},
    };
    for (const Aggregate& entry : kAggregates) {
        const int code = sqlite3_create_function_v2(connection, entry.name, 1, SQLITE_UTF8, nullptr,
                                                    nullptr, entry.step, entry.end, nullptr);
        if (code != SQLITE_OK) {
            throw DbError(dberror::kOther, QString::fromUtf8(sqlite3_errmsg(connection)));
        }
    }
}

} // namespace melovane::sqlite
