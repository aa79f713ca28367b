#include "platform/sqlite/functions/functions.h"

#include "platform/db/db_error.h"
#include "platform/db/text_compare.h"
#include "platform/db/value.h"
#include "platform/sqlite/functions/functions_date.h"
#include "platform/sqlite/functions/functions_value.h"
#include "platform/system/leading_number.h"

#include <cmath>
#include <memory>

namespace melovane::sqlite {

using namespace Qt::Literals::StringLiterals;

bool anyNull(int count, sqlite3_value** values)
{
    for (int i = 0; i < count; ++i) {
        if (isNull(values[i])) {
            return true;
        }
    }
    return false;
}

namespace {

QString utf8Of(sqlite3_value* value)
{
    const auto* bytes = sqlite3_value_text(value);
    return bytes == nullptr ? QString()
                            : QString::fromUtf8(reinterpret_cast<const char*>(bytes),
                                                sqlite3_value_bytes(value));
}

} // namespace

QString argText(sqlite3_value* value)
{
    switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
        return {};
    case SQLITE_FLOAT:
        return Value(sqlite3_value_double(value)).toText();
    case SQLITE_INTEGER:
        return QString::number(sqlite3_value_int64(value));
    default:
        return utf8Of(value);
    }
}

double argNumber(sqlite3_value* value)
{
    switch (sqlite3_value_type(value)) {
    case SQLITE_FLOAT:
    case SQLITE_INTEGER:
        return sqlite3_value_double(value);
    case SQLITE_NULL:
        return 0;
    default:
        return leadingNumber(utf8Of(value));
    }
}

int argLong(sqlite3_value* value)
{
    return toLongHalfEven(argNumber(value));
}

std::optional<double> argDay(sqlite3_value* value)
{
    switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
        return {};
    case SQLITE_FLOAT:
    case SQLITE_INTEGER: {
        const double day = sqlite3_value_double(value);
        return isDayNumber(day) ? std::optional(day) : std::nullopt;
    }
    default:
        return dialect::dateFromText(utf8Of(value));
    }
}

void giveText(sqlite3_context* context, const QString& text)
{
    if (text.size() > kLongestText) {
        giveError(context, dberror::kFieldTooSmall, u"Der Text ist zu lang."_s);
        return;
    }
    const QByteArray bytes = text.toUtf8();
    sqlite3_result_text(context, bytes.constData(), int(bytes.size()), SQLITE_TRANSIENT);
}

void giveNumber(sqlite3_context* context, double number)
{
    constexpr double kExact = 9'007'199'254'740'992.0; // beyond 2^53 a double is no exact integer
    if (std::isnan(number)) {
        sqlite3_result_null(context);
    } else if (number == std::floor(number) && std::abs(number) < kExact) {
        sqlite3_result_int64(context, qint64(number));
    } else {
        sqlite3_result_double(context, number);
    }
}

void giveLong(sqlite3_context* context, qint64 number)
{
    sqlite3_result_int64(context, number);
}

void giveTruth(sqlite3_context* context, bool truth)
{
    sqlite3_result_int(context, truth ? -1 : 0);
}

void giveError(sqlite3_context* context, int number, const QString& text)
{
    const QByteArray message = kErrorMark + QByteArray::number(number) + ':' + text.toUtf8();
    sqlite3_result_error(context, message.constData(), int(message.size()));
}

namespace {

void check(sqlite3* connection, int code)
{
    if (code != SQLITE_OK) {
        throw DbError(dberror::kOther, QString::fromUtf8(sqlite3_errmsg(connection)));
    }
}

void dropPattern(void* pattern)
{
    delete static_cast<textcompare::LikePattern*>(pattern);
}

/// Arguments: pattern, value. A constant pattern is made ready once per statement.
void like(sqlite3_context* context, int, sqlite3_value** values)
{
    if (anyNull(2, values)) {
        return;
    }
    auto* pattern = static_cast<textcompare::LikePattern*>(sqlite3_get_auxdata(context, 0));
    std::unique_ptr<textcompare::LikePattern> made;
    if (pattern == nullptr) {
        made = std::make_unique<textcompare::LikePattern>(argText(values[0]));
        pattern = made.get();
    }
    bool match = false;
    if (sqlite3_value_type(values[1]) == SQLITE_FLOAT) {
        match = pattern->matches(argText(values[1]));
    } else {
        const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(values[1]));
        match = bytes != nullptr && pattern->matchesUtf8(bytes, sqlite3_value_bytes(values[1]));
    }
    sqlite3_result_int(context, match ? 1 : 0);
    if (made) {
        sqlite3_set_auxdata(context, 0, made.release(), dropPattern);
    }
}

int collate(void*, int leftSize, const void* left, int rightSize, const void* right)
{
    return textcompare::compareUtf8(static_cast<const char*>(left), leftSize,
                                    static_cast<const char*>(right), rightSize);
}

using Now = std::function<QDateTime()>;

double dayNow(sqlite3_context* context)
{
    const QDateTime moment = (*static_cast<Now*>(sqlite3_user_data(context)))();
    // Dates of the suite have whole seconds.
    return dayNumber(moment.date(), moment.time().addMSecs(-moment.time().msec()));
}

void nowFunction(sqlite3_context* context, int, sqlite3_value**)
{
    sqlite3_result_double(context, dayNow(context));
}

void todayFunction(sqlite3_context* context, int, sqlite3_value**)
{
    giveNumber(context, std::floor(dayNow(context)));
}

void timeFunction(sqlite3_context* context, int, sqlite3_value**)
{
    const double day = dayNow(context);
    sqlite3_result_double(context, day - std::floor(day));
}

/// Seconds since midnight.
void timerFunction(sqlite3_context* context, int, sqlite3_value**)
{
    constexpr double kSecondsPerDay = 86'400;
    const double day = dayNow(context);
    sqlite3_result_double(context, std::round((day - std::floor(day)) * kSecondsPerDay));
}

void dropNow(void* now)
{
    delete static_cast<Now*>(now);
}

void registerClock(sqlite3* connection, const Now& now)
{
    constexpr FunctionEntry kClock[] = {
        {"mlv_now", nowFunction, 0},
        {"mlv_today", todayFunction, 0},
        {"mlv_timeofday", timeFunction, 0},
        {"mlv_timer", timerFunction, 0},
    };
    for (const FunctionEntry& entry : kClock) {
        // SQLite calls dropNow also when it refuses.
        check(connection,
              sqlite3_create_function_v2(connection, entry.name, entry.arguments, SQLITE_UTF8,
                                         std::make_unique<Now>(now).release(), entry.run, nullptr,
                                         nullptr, dropNow));
    }
}

void registerAll(sqlite3* connection, std::span<const FunctionEntry> entries)
{
    for (const FunctionEntry& entry : entries) {
        const int flags = SQLITE_UTF8 | (entry.constant ? SQLITE_DETERMINISTIC : 0);
        check(connection,
              sqlite3_create_function_v2(connection, entry.name, entry.arguments, flags, nullptr,
                                         entry.run, nullptr, nullptr, nullptr));
    }
}

} // namespace

void registerFunctions(sqlite3* connection, const std::function<QDateTime()>& now)
{
    check(connection, sqlite3_create_collation_v2(connection, kCollation, SQLITE_UTF8, nullptr,
                                                  collate, nullptr));
    constexpr FunctionEntry kLike[] = {{"like", like, 2}};
    registerAll(connection, kLike);
    registerAll(connection, conversionFunctions());
    registerAll(connection, textFunctions());
    registerAll(connection, numberFunctions());
    registerAll(connection, dateFunctions());
    registerAll(connection, formatFunctions());
    registerAggregates(connection);
    registerClock(connection, now);
}

} // namespace melovane::sqlite
