#include "platform/sqlite/index/index_statement.h"

#include "platform/sqlite/dialect/stored_text.h"

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;
using namespace dialect;

/// Digits that a double holds whatever they are.
constexpr qsizetype kExactDigits = 15;

/// Thrown inside this file where a statement leaves the shape.
struct OtherShape
{};

bool isText(const FieldDef& field)
{
    return field.Type == FieldType::Text || field.Type == FieldType::Memo;
}

double numberOf(const Expr& expr)
{
    if (expr.kind == Expr::Kind::Minus) {
        return 0 - numberOf(*expr.args.front());
    }
    if (expr.kind == Expr::Kind::Truth) {
        return expr.negated ? 0 : -1;
    }
    const bool plain = expr.kind == Expr::Kind::Number && expr.text.size() <= kExactDigits &&
                       std::all_of(expr.text.begin(), expr.text.end(),
                                   [](QChar digit) { return digit >= u'0' && digit <= u'9'; });
    if (!plain) {
        throw OtherShape{};
    }
    return double(expr.text.toLongLong());
}

SearchTest::Kind kindOf(Op op)
{
    switch (op) {
    case Op::Like:
        return SearchTest::Kind::Like;
    case Op::Equal:
        return SearchTest::Kind::Equal;
    case Op::GreaterEqual:
        return SearchTest::Kind::AtLeast;
    default:
        throw OtherShape{};
    }
}

class Reader
{
public:
    explicit Reader(const std::vector<FieldDef>& fields)
        : m_fields(fields)
    {}

    [[nodiscard]] SearchStatement read(const Statement& statement) const
    {
        if (statement.kind != StatementKind::Select || !statement.parameters.empty()) {
            throw OtherShape{};
        }
        const Select& select = *statement.select;
        const bool plain = !select.distinct && !select.distinctRow && select.top < 0 &&
                           select.unions.empty() && select.group.empty() && !select.having &&
                           select.from.size() == 1 &&
                           select.from.front()->kind == FromNode::Kind::Named &&
                           select.from.front()->alias.isEmpty() &&
                           sameName(select.from.front()->name, kSearchedTable);
        if (!plain) {
            throw OtherShape{};
        }
        SearchStatement result;
        result.isCount = isCount(select);
        if (!result.isCount) {
            requirePlainItems(select);
        }
        readWhere(select.where.get(), result.where);
        readOrder(select, result);
        return result;
    }

private:
    [[nodiscard]] static bool isCount(const Select& select)
    {
        const Expr* expr = select.items.size() == 1 ? select.items.front().expr.get() : nullptr;
        return expr != nullptr && expr->kind == Expr::Kind::Call && !expr->negated &&
               sameName(expr->text, u"count") && expr->args.size() == 1 &&
               expr->args.front()->kind == Expr::Kind::Star;
    }

    /// With columns under their own names, a name in the order list can mean nothing else.
    void requirePlainItems(const Select& select) const
    {
        for (const SelectItem& item : select.items) {
            const bool star = !item.expr && item.starOf.isEmpty();
            if (!star) {
                [[maybe_unused]] const FieldDef& field = columnOf(item.expr.get());
            }
            if (!item.alias.isEmpty()) {
                throw OtherShape{};
            }
        }
    }

    [[nodiscard]] const FieldDef& columnOf(const Expr* expr) const
    {
        if (expr == nullptr || expr->kind != Expr::Kind::Name || !expr->qualifier.isEmpty()) {
            throw OtherShape{};
        }
        for (const FieldDef& field : m_fields) {
            if (sameName(field.Name, expr->text)) {
                return field;
            }
        }
        throw OtherShape{};
    }

    void readOrder(const Select& select, SearchStatement& result) const
    {
        for (const OrderItem& item : select.order) {
            result.order.push_back({columnOf(item.expr.get()).Name, item.descending});
        }
        if (result.isCount && !result.order.empty()) {
            throw OtherShape{};
        }
    }

    void readWhere(const Expr* expr, SearchCondition& where) const
    {
        if (expr == nullptr) {
            return;
        }
        if (expr->kind == Expr::Kind::Chain && expr->ops.front() == Op::And) {
            for (const ExprPtr& arg : expr->args) {
                readWhere(arg.get(), where);
            }
            return;
        }
        std::vector<SearchTest> group;
        if (expr->kind == Expr::Kind::Chain && expr->ops.front() == Op::Or) {
            for (const ExprPtr& arg : expr->args) {
                group.push_back(test(*arg));
            }
        } else {
            group.push_back(test(*expr));
        }
        where.push_back(std::move(group));
    }

    [[nodiscard]] SearchTest test(const Expr& expr) const
    {
        const bool comparison = expr.kind == Expr::Kind::Chain && expr.ops.size() == 1;
        const bool list = expr.kind == Expr::Kind::InList && !expr.negated;
        if (!comparison && !list) {
            throw OtherShape{};
        }
        const FieldDef& field = columnOf(expr.args.front().get());
        SearchTest result;
        result.column = field.Name;
        result.isText = isText(field);
        result.kind = list ? SearchTest::Kind::AnyOfNumbers : kindOf(expr.ops.front());
        if (result.isText) {
            takeText(*expr.args[1], result);
        } else {
            takeNumbers(expr, field, result);
        }
        return result;
    }

    static void takeText(const Expr& constant, SearchTest& test)
    {
        if (constant.kind != Expr::Kind::Text || test.kind == SearchTest::Kind::AnyOfNumbers) {
            throw OtherShape{};
        }
        // What SQLite gets to see of it.
        test.text = QString::fromUtf8(toBytes(constant.text));
    }

    static void takeNumbers(const Expr& expr, const FieldDef& field, SearchTest& test)
    {
        const bool whole = field.Type == FieldType::Long || field.Type == FieldType::Double;
        if (!whole || test.kind == SearchTest::Kind::Like) {
            throw OtherShape{};
        }
        for (std::size_t i = 1; i < expr.args.size(); ++i) {
            test.numbers.push_back(numberOf(*expr.args[i]));
        }
    }

    const std::vector<FieldDef>& m_fields;
};

} // namespace

std::optional<SearchStatement> searchStatement(const ParsedStatement& statement,
                                               const std::vector<FieldDef>& fields)
{
    try {
        return Reader(fields).read(statement.tree());
    } catch (const OtherShape&) {
        return {};
    }
}

} // namespace melovane::sqlite
