#pragma once

#include "platform/sqlite/dialect/writer.h"

#include <optional>

namespace melovane::sqlite::dialect {

/// The parameters of one statement, by their place: those that it declares, and names that stand
/// for nothing else. Names have no regard to case.
class StatementParameters
{
public:
    /// \param mayAdd see mayAdd()
    explicit StatementParameters(bool mayAdd)
        : m_mayAdd(mayAdd)
    {}

    /// Takes over what a statement or stored query declares; of equal names the first counts.
    void declare(const std::vector<DeclaredParameter>& parameters);

    /// The place of the parameter of that name, or -1.
    [[nodiscard]] int find(QStringView name) const;

    /// False where an unknown name is a fault.
    [[nodiscard]] bool mayAdd() const { return m_mayAdd; }

    void setMayAdd(bool mayAdd) { m_mayAdd = mayAdd; }

    /// Adds one without a declared type. \return its place
    [[nodiscard]] int add(const QString& name);

    /// From now on these values stand where the parameters do.
    void setArguments(std::vector<Sql> arguments) { m_arguments = std::move(arguments); }

    /// What is written for a parameter; null for one without its argument.
    [[nodiscard]] Sql sql(int place) const;

    [[nodiscard]] const std::vector<ParameterDef>& all() const { return m_all; }

private:
    bool m_mayAdd;
    std::vector<ParameterDef> m_all;
    std::vector<bool> m_untyped; ///< beside them: without a declared type
    std::optional<std::vector<Sql>> m_arguments;
};

} // namespace melovane::sqlite::dialect
