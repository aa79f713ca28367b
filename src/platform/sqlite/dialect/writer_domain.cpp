#include "platform/sqlite/dialect/binder.h"
#include "platform/sqlite/dialect/parser.h"

#include <array>

namespace melovane::sqlite::dialect {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::array kDomainFunctions{
    std::pair{"davg"_L1, "avg"_L1},       std::pair{"dcount"_L1, "count"_L1},
    std::pair{"dfirst"_L1, "first"_L1},   std::pair{"dlast"_L1, "last"_L1},
    std::pair{"dlookup"_L1, ""_L1},       std::pair{"dmax"_L1, "max"_L1},
    std::pair{"dmin"_L1, "min"_L1},       std::pair{"dstdev"_L1, "stdev"_L1},
    std::pair{"dstdevp"_L1, "stdevp"_L1}, std::pair{"dsum"_L1, "sum"_L1},
    std::pair{"dvar"_L1, "var"_L1},       std::pair{"dvarp"_L1, "varp"_L1},
};

} // namespace

std::optional<QLatin1StringView> domainAggregate(QStringView function)
{
    for (const auto& [name, aggregate] : kDomainFunctions) {
        if (function.compare(name, Qt::CaseInsensitive) == 0) {
            return aggregate;
        }
    }
    return {};
}

/// dcount("value", "table", "condition"): a select of its own, which sees none of the names around
/// it. Its texts are read as parts of the statement, so a fault is found at their place.
Sql Translator::domainCall(const Expr& expr, QLatin1StringView aggregate)
{
    expectArguments(expr, 2, 3);
    Domain& domain = m_domains.emplace_back();
    const auto tokensOf = [&](const Expr& part) -> const Tokens& {
        if (part.kind != Expr::Kind::Text) {
            fail(part.position, u"\"%1\" verlangt hier einen festen Text"_s.arg(expr.text));
        }
        const QString& text = domain.texts.emplace_back(part.text.toString());
        Tokens& tokens = domain.tokens.emplace_back(tokenize(text));
        for (Token& token : tokens.list) {
            token.position = part.position;
        }
        return tokens;
    };
    Select& rows = domain.select;
    rows.position = expr.position;
    SelectItem& item = rows.items.emplace_back();
    item.expr = Parser(*m_text, tokensOf(*expr.args[0])).parseExpression();
    if (!aggregate.isEmpty()) {
        auto outer = std::make_unique<Expr>();
        outer->kind = Expr::Kind::Call;
        outer->position = expr.position;
        outer->text = domain.texts.emplace_back(aggregate);
        outer->args.push_back(std::move(item.expr));
        item.expr = std::move(outer);
    }
    FromPtr& source = rows.from.emplace_back(std::make_unique<FromNode>());
    source->position = expr.args[1]->position;
    source->name = Parser(*m_text, tokensOf(*expr.args[1])).parseName();
    if (expr.args.size() > 2) {
        const Tokens& condition = tokensOf(*expr.args[2]);
        const bool any = condition.list.size() == 1; // nothing but the end
        rows.where = any ? nullptr : Parser(*m_text, condition).parseExpression();
    }
    return scalar(rows, nullptr);
}

} // namespace melovane::sqlite::dialect
