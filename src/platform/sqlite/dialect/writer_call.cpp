#include "platform/sqlite/dialect/binder.h"

#include <algorithm>
#include <array>

namespace melovane::sqlite::dialect {

using namespace Qt::Literals::StringLiterals;

namespace {

/// What a function gives.
enum class Gives
{
    Text,
    Long,
    Double,
    Date,
    Boolean,
    NumberAsFirst, ///< the number type of the first argument
    SameAsFirst
};

/// What becomes of its arguments.
enum class Takes
{
    Any,
    Texts ///< dates are written out first
};

struct FunctionRule
{
    QLatin1StringView name;
    QLatin1StringView sql;
    size_t least;
    size_t most;
    Gives gives;
    Takes takes = Takes::Any;
};

/// The dialect's functions and what registerFunctions() calls them. In alphabetical order.
constexpr std::array kFunctions{
    FunctionRule{"abs"_L1, "mlv_abs"_L1, 1, 1, Gives::NumberAsFirst},
    FunctionRule{"asc"_L1, "mlv_asc"_L1, 1, 1, Gives::Long, Takes::Texts},
    FunctionRule{"ascw"_L1, "mlv_asc"_L1, 1, 1, Gives::Long, Takes::Texts},
    FunctionRule{"atn"_L1, "mlv_atn"_L1, 1, 1, Gives::Double},
    FunctionRule{"cbool"_L1, "mlv_tobool"_L1, 1, 1, Gives::Boolean},
    FunctionRule{"cbyte"_L1, "mlv_clng"_L1, 1, 1, Gives::Long},
    FunctionRule{"ccur"_L1, "mlv_cdbl"_L1, 1, 1, Gives::Double},
    FunctionRule{"cdate"_L1, "mlv_cdate"_L1, 1, 1, Gives::Date},
    FunctionRule{"cdbl"_L1, "mlv_cdbl"_L1, 1, 1, Gives::Double},
    FunctionRule{"cdec"_L1, "mlv_cdbl"_L1, 1, 1, Gives::Double},
    FunctionRule{"chr"_L1, "mlv_chr"_L1, 1, 1, Gives::Text},
    FunctionRule{"chrw"_L1, "mlv_chr"_L1, 1, 1, Gives::Text},
    FunctionRule{"cint"_L1, "mlv_clng"_L1, 1, 1, Gives::Long},
    FunctionRule{"clng"_L1, "mlv_clng"_L1, 1, 1, Gives::Long},
    FunctionRule{"cos"_L1, "mlv_cos"_L1, 1, 1, Gives::Double},
    FunctionRule{"csng"_L1, "mlv_cdbl"_L1, 1, 1, Gives::Double},
    FunctionRule{"cstr"_L1, "mlv_cstr"_L1, 1, 1, Gives::Text, Takes::Texts},
    FunctionRule{"cvar"_L1, "mlv_same"_L1, 1, 1, Gives::SameAsFirst},
    FunctionRule{"cvdate"_L1, "mlv_cdate"_L1, 1, 1, Gives::Date},
    FunctionRule{"date"_L1, "mlv_today"_L1, 0, 0, Gives::Date},
    FunctionRule{"dateadd"_L1, "mlv_dateadd"_L1, 3, 3, Gives::Date},
    FunctionRule{"datediff"_L1, "mlv_datediff"_L1, 3, 5, Gives::Long},
    FunctionRule{"datepart"_L1, "mlv_datepart"_L1, 2, 4, Gives::Long},
    FunctionRule{"dateserial"_L1, "mlv_dateserial"_L1, 3, 3, Gives::Date},
    FunctionRule{"datevalue"_L1, "mlv_datevalue"_L1, 1, 1, Gives::Date},
    FunctionRule{"day"_L1, "mlv_day"_L1, 1, 1, Gives::Long},
    FunctionRule{"exp"_L1, "mlv_exp"_L1, 1, 1, Gives::Double},
    FunctionRule{"fix"_L1, "mlv_fix"_L1, 1, 1, Gives::NumberAsFirst},
    FunctionRule{"format"_L1, "mlv_format"_L1, 1, 2, Gives::Text},
    FunctionRule{"formatcurrency"_L1, "mlv_formatcurrency"_L1, 1, 5, Gives::Text},
    FunctionRule{"formatdatetime"_L1, "mlv_formatdatetime"_L1, 1, 2, Gives::Text},
    FunctionRule{"formatnumber"_L1, "mlv_formatnumber"_L1, 1, 5, Gives::Text},
    FunctionRule{"formatpercent"_L1, "mlv_formatpercent"_L1, 1, 5, Gives::Text},
    FunctionRule{"hex"_L1, "mlv_hex"_L1, 1, 1, Gives::Text},
    FunctionRule{"hour"_L1, "mlv_hour"_L1, 1, 1, Gives::Long},
    FunctionRule{"instr"_L1, "mlv_instr"_L1, 2, 4, Gives::Long, Takes::Texts},
    FunctionRule{"instrrev"_L1, "mlv_instrrev"_L1, 2, 4, Gives::Long, Takes::Texts},
    FunctionRule{"int"_L1, "mlv_int"_L1, 1, 1, Gives::NumberAsFirst},
    FunctionRule{"isdate"_L1, "mlv_isdate"_L1, 1, 1, Gives::Boolean, Takes::Texts},
    FunctionRule{"isempty"_L1, "mlv_isempty"_L1, 1, 1, Gives::Boolean},
    FunctionRule{"isnumeric"_L1, "mlv_isnumeric"_L1, 1, 1, Gives::Boolean, Takes::Texts},
    FunctionRule{"lcase"_L1, "mlv_lcase"_L1, 1, 1, Gives::Text, Takes::Texts},
    FunctionRule{"left"_L1, "mlv_left"_L1, 2, 2, Gives::Text, Takes::Texts},
    FunctionRule{"len"_L1, "mlv_len"_L1, 1, 1, Gives::Long, Takes::Texts},
    FunctionRule{"log"_L1, "mlv_log"_L1, 1, 1, Gives::Double},
    FunctionRule{"ltrim"_L1, "mlv_ltrim"_L1, 1, 1, Gives::Text, Takes::Texts},
    FunctionRule{"mid"_L1, "mlv_mid"_L1, 2, 3, Gives::Text, Takes::Texts},
    FunctionRule{"minute"_L1, "mlv_minute"_L1, 1, 1, Gives::Long},
    FunctionRule{"month"_L1, "mlv_month"_L1, 1, 1, Gives::Long},
    FunctionRule{"monthname"_L1, "mlv_monthname"_L1, 1, 2, Gives::Text},
    FunctionRule{"now"_L1, "mlv_now"_L1, 0, 0, Gives::Date},
    FunctionRule{"oct"_L1, "mlv_oct"_L1, 1, 1, Gives::Text},
    FunctionRule{"partition"_L1, "mlv_partition"_L1, 4, 4, Gives::Text},
    FunctionRule{"replace"_L1, "mlv_replace"_L1, 3, 6, Gives::Text, Takes::Texts},
    FunctionRule{"right"_L1, "mlv_right"_L1, 2, 2, Gives::Text, Takes::Texts},
    FunctionRule{"rnd"_L1, "mlv_rnd"_L1, 0, 1, Gives::Double},
    FunctionRule{"round"_L1, "mlv_round"_L1, 1, 2, Gives::Double},
    FunctionRule{"rtrim"_L1, "mlv_rtrim"_L1, 1, 1, Gives::Text, Takes::Texts},
    FunctionRule{"second"_L1, "mlv_second"_L1, 1, 1, Gives::Long},
    FunctionRule{"sgn"_L1, "mlv_sgn"_L1, 1, 1, Gives::Long},
    FunctionRule{"sin"_L1, "mlv_sin"_L1, 1, 1, Gives::Double},
    FunctionRule{"space"_L1, "mlv_space"_L1, 1, 1, Gives::Text},
    FunctionRule{"sqr"_L1, "mlv_sqr"_L1, 1, 1, Gives::Double},
    FunctionRule{"str"_L1, "mlv_str"_L1, 1, 1, Gives::Text, Takes::Texts},
    FunctionRule{"strcomp"_L1, "mlv_strcomp"_L1, 2, 3, Gives::Long, Takes::Texts},
    FunctionRule{"strconv"_L1, "mlv_strconv"_L1, 2, 2, Gives::Text, Takes::Texts},
    FunctionRule{"string"_L1, "mlv_string"_L1, 2, 2, Gives::Text, Takes::Texts},
    FunctionRule{"strreverse"_L1, "mlv_strreverse"_L1, 1, 1, Gives::Text, Takes::Texts},
    FunctionRule{"tan"_L1, "mlv_tan"_L1, 1, 1, Gives::Double},
    FunctionRule{"time"_L1, "mlv_timeofday"_L1, 0, 0, Gives::Date},
    FunctionRule{"timer"_L1, "mlv_timer"_L1, 0, 0, Gives::Double},
    FunctionRule{"timeserial"_L1, "mlv_timeserial"_L1, 3, 3, Gives::Date},
    FunctionRule{"timevalue"_L1, "mlv_timevalue"_L1, 1, 1, Gives::Date},
    FunctionRule{"trim"_L1, "mlv_trim"_L1, 1, 1, Gives::Text, Takes::Texts},
    FunctionRule{"ucase"_L1, "mlv_ucase"_L1, 1, 1, Gives::Text, Takes::Texts},
    FunctionRule{"val"_L1, "mlv_val"_L1, 1, 1, Gives::Double, Takes::Texts},
    FunctionRule{"weekday"_L1, "mlv_weekday"_L1, 1, 2, Gives::Long},
    FunctionRule{"weekdayname"_L1, "mlv_weekdayname"_L1, 1, 3, Gives::Text},
    FunctionRule{"year"_L1, "mlv_year"_L1, 1, 1, Gives::Long},
};

const FunctionRule* ruleOf(QStringView name)
{
    // Old statements mark functions that give texts with a "$".
    if (name.endsWith(u'$')) {
        name.chop(1);
    }
    const auto* found =
        std::lower_bound(kFunctions.begin(), kFunctions.end(), name,
                         [](const FunctionRule& rule, QStringView wanted) {
                             return wanted.compare(rule.name, Qt::CaseInsensitive) > 0;
                         });
    const bool hit =
        found != kFunctions.end() && name.compare(found->name, Qt::CaseInsensitive) == 0;
    return hit ? found : nullptr;
}

struct AggregateRule
{
    QLatin1StringView name;
    QLatin1StringView sql;
};

constexpr std::array kAggregates{
    AggregateRule{"avg"_L1, "avg"_L1},         AggregateRule{"count"_L1, "count"_L1},
    AggregateRule{"first"_L1, "mlv_first"_L1}, AggregateRule{"last"_L1, "mlv_last"_L1},
    AggregateRule{"max"_L1, "max"_L1},         AggregateRule{"min"_L1, "min"_L1},
    AggregateRule{"stdev"_L1, "mlv_stdev"_L1}, AggregateRule{"stdevp"_L1, "mlv_stdevp"_L1},
    AggregateRule{"sum"_L1, "sum"_L1},         AggregateRule{"var"_L1, "mlv_var"_L1},
    AggregateRule{"varp"_L1, "mlv_varp"_L1},
};

const AggregateRule* aggregateOf(QStringView name)
{
    const auto* found =
        std::find_if(kAggregates.begin(), kAggregates.end(), [&](const AggregateRule& rule) {
            return name.compare(rule.name, Qt::CaseInsensitive) == 0;
        });
    return found == kAggregates.end() ? nullptr : found;
}

FieldType typeOf(Gives gives, const std::vector<Sql>& args)
{
    switch (gives) {
    case Gives::Text:
        return FieldType::Text;
    case Gives::Long:
        return FieldType::Long;
    case Gives::Double:
        return FieldType::Double;
    case Gives::Date:
        return FieldType::Date;
    case Gives::Boolean:
        return FieldType::Boolean;
    case Gives::SameAsFirst:
        return args.front().type;
    case Gives::NumberAsFirst:
        break;
    }
    const Sql& first = args.front();
    return first.typed && !isText(first) ? first.type : FieldType::Double;
}

/// A chain of cases: `pairs` are conditions (or values of the subject) and results by turns.
Sql cases(const std::vector<Sql>& pairs, const Sql* subject, const Sql* other)
{
    Sql result;
    result.typed = false;
    const auto take = [&](QLatin1StringView word, const Sql& part) {
        result.text += word + part.text;
        result.stack = std::max(result.stack, part.stack + 7);
        result.height = std::max(result.height, part.height + 1);
        result.parameter = result.parameter || part.parameter;
    };
    const auto takeType = [&](const Sql& part) {
        if (part.typed) {
            result.type = result.typed ? commonType(result.type, part.type) : part.type;
            result.typed = true;
        }
    };
    result.text = u"CASE"_s;
    if (subject != nullptr) {
        take(" "_L1, *subject);
    }
    for (size_t i = 0; i + 1 < pairs.size(); i += 2) {
        take(" WHEN "_L1, pairs[i]);
        take(" THEN "_L1, pairs[i + 1]);
        takeType(pairs[i + 1]);
    }
    if (other != nullptr) {
        take(" ELSE "_L1, *other);
        takeType(*other);
    }
    result.text += u" END"_s;
    result.strength = kBindsMost;
    check(result);
    return result;
}

} // namespace

bool isAggregate(QStringView function)
{
    return aggregateOf(function) != nullptr;
}

void Translator::expectArguments(const Expr& expr, size_t least, size_t most) const
{
    const bool star = !expr.args.empty() && expr.args.front()->kind == Expr::Kind::Star;
    if (star || expr.negated || expr.args.size() < least || expr.args.size() > most) {
        fail(expr.position, u"falsche Zahl von Argumenten für \"%1\""_s.arg(expr.text));
    }
}

Sql Translator::functionCall(const Expr& expr, Scope& scope)
{
    if (isAggregate(expr.text)) {
        return aggregateCall(expr, scope);
    }
    if (ruleOf(expr.text) != nullptr) {
        return ruledCall(expr, scope);
    }
    if (const auto aggregate = domainAggregate(expr.text)) {
        return domainCall(expr, *aggregate);
    }
    using Writer = Sql (Translator::*)(const Expr&, Scope&);
    constexpr std::pair<QLatin1StringView, Writer> kWriters[] = {
        {"choose"_L1, &Translator::chooseCall}, {"iif"_L1, &Translator::iifCall},
        {"isnull"_L1, &Translator::isNullCall}, {"nz"_L1, &Translator::nzCall},
        {"switch"_L1, &Translator::switchCall},
    };
    for (const auto& [name, writer] : kWriters) {
        if (expr.text.compare(name, Qt::CaseInsensitive) == 0) {
            return (this->*writer)(expr, scope);
        }
    }
    fail(expr.position, u"unbekannte Funktion \"%1\""_s.arg(expr.text));
}

Sql Translator::ruledCall(const Expr& expr, Scope& scope)
{
    const FunctionRule& rule = *ruleOf(expr.text);
    expectArguments(expr, rule.least, rule.most);
    std::vector<Sql> args;
    for (const ExprPtr& arg : expr.args) {
        Sql value = asValue(expression(*arg, scope));
        const bool asWritten = rule.takes == Takes::Texts && isDate(value);
        args.push_back(asWritten ? asText(std::move(value)) : std::move(value));
    }
    const FieldType type = typeOf(rule.gives, args);
    return call(rule.sql, args, type);
}

Sql Translator::isNullCall(const Expr& expr, Scope& scope)
{
    expectArguments(expr, 1, 1);
    Sql value = atLeast(expression(*expr.args.front(), scope), kBindsLess + 1);
    value.text += u" IS NULL"_s;
    value.type = FieldType::Boolean;
    value.typed = true;
    value.form = Sql::Form::Truth;
    value.strength = kBindsEqual;
    value.stack = std::max(value.stack, 3);
    return value;
}

/// SQLite hands an aggregate to the select whose columns it names; one that names only columns of
/// an outer select would land there.
Sql Translator::aggregateCall(const Expr& expr, Scope& scope)
{
    if (!scope.aggregates) {
        fail(expr.position, u"\"%1\" ist hier nicht erlaubt"_s.arg(expr.text));
    }
    scope.aggregates = false;
    const bool groupedBefore = std::exchange(scope.grouped, false);
    const bool ownBefore = std::exchange(scope.sawOwnColumn, false);
    const bool outerBefore = std::exchange(scope.sawOuterColumn, false);
    const AggregateRule& rule = *aggregateOf(expr.text);
    const QString distinct = expr.negated ? u"DISTINCT "_s : QString();
    const bool isCount = rule.sql == "count"_L1;
    Sql result;
    if (isCount) {
        result = countCall(expr, scope, distinct);
    } else {
        if (expr.args.size() != 1 || expr.args.front()->kind == Expr::Kind::Star) {
            fail(expr.position, u"falsche Zahl von Argumenten für \"%1\""_s.arg(expr.text));
        }
        Sql arg = asValue(expression(*expr.args.front(), scope));
        const bool keepsType = rule.sql == "min"_L1 || rule.sql == "max"_L1 ||
                               rule.sql == "mlv_first"_L1 || rule.sql == "mlv_last"_L1;
        arg = keepsType ? collated(std::move(arg)) : asNumber(std::move(arg));
        const FieldType type = keepsType ? arg.type : FieldType::Double;
        const bool typed = !keepsType || arg.typed;
        arg.text.prepend(distinct);
        result = call(rule.sql, arg, type);
        result.typed = typed;
    }
    if (scope.filter != nullptr) {
        result.text += u" FILTER (WHERE "_s + scope.filter->text + u')';
        result.stack = std::max(result.stack, scope.filter->stack + 8);
        result.height = std::max(result.height, scope.filter->height + 1);
        result.parameter = result.parameter || scope.filter->parameter;
        if (isCount) {
            // A cell without rows is empty, for a count as for a sum.
            result.text = u"nullif("_s + result.text + u", 0)"_s;
            result.stack += 5;
            result.height += 1;
        }
    }
    if (scope.sawOuterColumn && !scope.sawOwnColumn) {
        fail(expr.position, u"\"%1\" nennt nur Spalten der äußeren Abfrage"_s.arg(expr.text));
    }
    scope.sawOwnColumn = scope.sawOwnColumn || ownBefore;
    scope.sawOuterColumn = scope.sawOuterColumn || outerBefore;
    scope.aggregates = true;
    scope.grouped = groupedBefore;
    return result;
}

Sql Translator::countCall(const Expr& expr, Scope& scope, const QString& distinct)
{
    if (expr.args.size() != 1) {
        fail(expr.position, u"falsche Zahl von Argumenten für \"count\""_s);
    }
    Sql arg;
    if (expr.args.front()->kind == Expr::Kind::Star) {
        arg.text = u"*"_s;
    } else {
        arg = collated(asValue(expression(*expr.args.front(), scope)));
    }
    arg.text.prepend(distinct);
    return call("count"_L1, arg, FieldType::Long);
}

Sql Translator::iifCall(const Expr& expr, Scope& scope)
{
    expectArguments(expr, 2, 3);
    const Sql test = expression(*expr.args[0], scope);
    const Sql yes = asValue(expression(*expr.args[1], scope));
    if (expr.args.size() == 2) {
        return cases({test, yes}, nullptr, nullptr);
    }
    const Sql no = asValue(expression(*expr.args[2], scope));
    return cases({test, yes}, nullptr, &no);
}

Sql Translator::switchCall(const Expr& expr, Scope& scope)
{
    constexpr size_t kMost = 200;
    expectArguments(expr, 2, kMost);
    std::vector<Sql> pairs;
    for (size_t i = 0; i + 1 < expr.args.size(); i += 2) {
        pairs.push_back(expression(*expr.args[i], scope));
        pairs.push_back(asValue(expression(*expr.args[i + 1], scope)));
    }
    return cases(pairs, nullptr, nullptr);
}

Sql Translator::chooseCall(const Expr& expr, Scope& scope)
{
    constexpr size_t kMost = 200;
    expectArguments(expr, 2, kMost);
    const Sql place =
        call("mlv_fix"_L1, asNumber(expression(*expr.args[0], scope)), FieldType::Long);
    std::vector<Sql> pairs;
    for (size_t i = 1; i < expr.args.size(); ++i) {
        pairs.push_back(numberLiteral(double(i), FieldType::Long));
        pairs.push_back(asValue(expression(*expr.args[i], scope)));
    }
    return cases(pairs, &place, nullptr);
}

Sql Translator::nzCall(const Expr& expr, Scope& scope)
{
    expectArguments(expr, 1, 2);
    const Sql value = asValue(expression(*expr.args[0], scope));
    const bool number = isNumber(value) || isDate(value);
    const Sql other = expr.args.size() == 2 ? asValue(expression(*expr.args[1], scope))
                      : number              ? numberLiteral(0, FieldType::Long)
                                            : textLiteral(u"");
    const FieldType type = !value.typed  ? other.type
                           : other.typed ? commonType(value.type, other.type)
                                         : value.type;
    return call("ifnull"_L1, {value, other}, isDate(value) ? FieldType::Date : type);
}

} // namespace melovane::sqlite::dialect
