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
        {"mlv_abs", unary<absolute>, 1},
        {"mlv_atn", unary<arcTangent>, 1},
        {"mlv_bitand", bits<bitAnd, 0, 0>, 2},
        {"mlv_biteqv", bitEqv, 2},
        {"mlv_bitimp", bitImp, 2},
        {"mlv_bitnot", bitNot, 1},
        {"mlv_bitor", bits<bitOr, -1, -1>, 2},
        {"mlv_bitxor", bitXor, 2},
        {"mlv_cos", unary<cosine>, 1},
        {"mlv_exp", unary<exponential>, 1},
        {"mlv_fix", unary<cutTowardsZero>, 1},
        {"mlv_hex", inBase<16>, 1},
        {"mlv_idiv", intDivide, 2},
        {"mlv_int", unary<cutDown>, 1},
        {"mlv_log", unary<logarithm>, 1},
        {"mlv_mod", modulo, 2},
        {"mlv_oct", inBase<8>, 1},
        {"mlv_partition", partition, 4},
        {"mlv_power", power, 2},
        {"mlv_rnd", random, -1, false},
        {"mlv_round", roundFunction, -1},
        {"mlv_sgn", unary<signOf>, 1},
        {"mlv_sin", unary<sine>, 1},
        {"mlv_sqr", unary<squareRoot>, 1},
        {"mlv_tan", unary<tangent>, 1},
        {"mlv_val", val, 1},
    };
    return kEntries;
}

} // namespace melovane::sqlite
