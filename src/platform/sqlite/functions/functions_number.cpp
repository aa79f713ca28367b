#include "platform/sqlite/functions/functions_value.h"

#include <QRandomGenerator>

#include <cmath>

namespace melovane::sqlite {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A function of one number that has no result outside its domain.
template <double (*Function)(double)>
void unary(sqlite3_context* context, int, sqlite3_value** values)
{
    if (isNull(values[0])) {
        return;
    }
    const double result = Function(argNumber(values[0]));
    if (std::isfinite(result)) {
        giveNumber(context, result);
    }
}

double cutTowardsZero(double number)
{
    return std::trunc(number);
}

double cutDown(double number)
{
    return std::floor(number);
}

double signOf(double number)
{
    return number > 0 ? 1 : (number < 0 ? -1 : 0);
}

double absolute(double number)
{
    return std::abs(number);
}

double logarithm(double number)
{
    return number > 0 ? std::log(number) : std::nan("");
}

double squareRoot(double number)
{
    return std::sqrt(number);
}

double exponential(double number)
{
    return std::exp(number);
}

double sine(double number)
{
    return std::sin(number);
}

double cosine(double number)
{
    return std::cos(number);
}

double tangent(double number)
{
    return std::tan(number);
}

double arcTangent(double number)
{
    return std::atan(number);
}

/// Number and places; half to even, as every rounding of the suite.
void roundFunction(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (anyNull(count, values)) {
        return;
    }
    const int places = count > 1 ? std::clamp(argLong(values[1]), 0, 15) : 0;
    const double scale = std::pow(10.0, places);
    const double number = argNumber(values[0]);
    const double scaled = number * scale;
    giveNumber(context, std::isfinite(scaled) ? std::nearbyint(scaled) / scale : number);
}

void power(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (anyNull(count, values)) {
        return;
    }
    const double result = std::pow(argNumber(values[0]), argNumber(values[1]));
    if (std::isfinite(result)) {
        giveNumber(context, result);
    }
}

/// Both operands as whole numbers; empty when there is nothing to divide by.
bool wholeOperands(int count, sqlite3_value** values, double& left, double& right)
{
    if (anyNull(count, values)) {
        return false;
    }
    left = std::nearbyint(argNumber(values[0]));
    right = std::nearbyint(argNumber(values[1]));
    return std::isfinite(left) && std::isfinite(right) && right != 0;
}

void intDivide(sqlite3_context* context, int count, sqlite3_value** values)
{
    double left = 0;
    double right = 0;
    if (wholeOperands(count, values, left, right)) {
        giveNumber(context, std::trunc(left / right));
    }
}

void modulo(sqlite3_context* context, int count, sqlite3_value** values)
{
    double left = 0;
    double right = 0;
    if (wholeOperands(count, values, left, right)) {
        giveNumber(context, std::fmod(left, right) + 0.0);
    }
}

/// Bit by bit over 32 bits. A null side leaves the result open unless the other side alone decides
/// it: `Deciding` as one side gives `Decided` whatever the other is.
template <qint32 (*Function)(qint32, qint32), qint32 Deciding, qint32 Decided>
void bits(sqlite3_context* context, int, sqlite3_value** values)
{
    if (!anyNull(2, values)) {
        giveLong(context, Function(argLong(values[0]), argLong(values[1])));
        return;
    }
    for (int i = 0; i < 2; ++i) {
        if (!isNull(values[i]) && argLong(values[i]) == Deciding) {
            giveLong(context, Decided);
        }
    }
}

qint32 bitAnd(qint32 left, qint32 right)
{
    return left & right;
}

qint32 bitOr(qint32 left, qint32 right)
{
    return left | right;
}

/// Also for null sides: a true right side or a false left side decides.
void bitImp(sqlite3_context* context, int, sqlite3_value** values)
{
    if (!anyNull(2, values)) {
        giveLong(context, ~argLong(values[0]) | argLong(values[1]));
    } else if ((!isNull(values[0]) && argLong(values[0]) == 0) ||
               (!isNull(values[1]) && argLong(values[1]) == -1)) {
        giveLong(context, -1);
    }
}

void bitXor(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (!anyNull(count, values)) {
        giveLong(context, argLong(values[0]) ^ argLong(values[1]));
    }
}

void bitEqv(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (!anyNull(count, values)) {
        giveLong(context, ~(argLong(values[0]) ^ argLong(values[1])));
    }
}

void bitNot(sqlite3_context* context, int, sqlite3_value** values)
{
    if (!isNull(values[0])) {
        giveLong(context, ~argLong(values[0]));
    }
}

void random(sqlite3_context* context, int, sqlite3_value**)
{
    sqlite3_result_double(context, QRandomGenerator::global()->generateDouble());
}

template <int Base> void inBase(sqlite3_context* context, int, sqlite3_value** values)
{
    if (!isNull(values[0])) {
        giveText(context, QString::number(quint32(argLong(values[0])), Base).toUpper());
    }
}

/// Number, start, stop, step: the range that holds the number, as "start:stop", both of one width.
void partition(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (anyNull(count, values)) {
        return;
    }
    const qint64 number = argLong(values[0]);
    const qint64 start = argLong(values[1]);
    const qint64 stop = argLong(values[2]);
    const qint64 step = argLong(values[3]);
    if (start < 0 || stop <= start || step < 1) {
        return;
    }
    const qsizetype width =
        std::max(QString::number(start - 1).size(), QString::number(stop + 1).size());
    const auto cell = [&](qint64 value) { return QString::number(value).rightJustified(width); };
    const QString blank(width, u' ');
    if (number < start) {
        giveText(context, blank + u':' + cell(start - 1));
    } else if (number > stop) {
        giveText(context, cell(stop + 1) + u':' + blank);
    } else {
        const qint64 low = start + (number - start) / step * step;
        giveText(context, cell(low) + u':' + cell(std::min(low + step - 1, stop)));
    }
}

/// The number at the beginning of a text.
void val(sqlite3_context* context, int, sqlite3_value** values)
{
    if (!isNull(values[0])) {
        giveNumber(context, argNumber(values[0]));
    }
}

} // namespace

std::span<const FunctionEntry> numberFunctions()
{
    static constexpr FunctionEntry kEntries[] = {
        {"mlv_abs", 1, unary<absolute>},
        {"mlv_atn", 1, unary<arcTangent>},
        {"mlv_bitand", 2, bits<bitAnd, 0, 0>},
        {"mlv_biteqv", 2, bitEqv},
        {"mlv_bitimp", 2, bitImp},
        {"mlv_bitnot", 1, bitNot},
        {"mlv_bitor", 2, bits<bitOr, -1, -1>},
        {"mlv_bitxor", 2, bitXor},
        {"mlv_cos", 1, unary<cosine>},
        {"mlv_exp", 1, unary<exponential>},
        {"mlv_fix", 1, unary<cutTowardsZero>},
        {"mlv_hex", 1, inBase<16>},
        {"mlv_idiv", 2, intDivide},
        {"mlv_int", 1, unary<cutDown>},
        {"mlv_log", 1, unary<logarithm>},
        {"mlv_mod", 2, modulo},
        {"mlv_oct", 1, inBase<8>},
        {"mlv_partition", 4, partition},
        {"mlv_power", 2, power},
        {"mlv_rnd", -1, random, false},
        {"mlv_round", -1, roundFunction},
        {"mlv_sgn", 1, unary<signOf>},
        {"mlv_sin", 1, unary<sine>},
        {"mlv_sqr", 1, unary<squareRoot>},
        {"mlv_tan", 1, unary<tangent>},
        {"mlv_val", 1, val},
    };
    return kEntries;
}

} // namespace melovane::sqlite
