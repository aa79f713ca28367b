#pragma once

#include "platform/db/value.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace melovane {

/// Attributes of a Field definition, as the catalogue gives them: keep.
inline constexpr int kFieldAutoNumber = 16;
inline constexpr int kFieldFixed = 1;
inline constexpr int kFieldVariable = 2;

/// Attributes of a TableDef: 0 is a plain local table.
inline constexpr int kTableLinked = 0x40000000;
inline constexpr int kTableSystem = -0x7FFFFFFE;

/// A column of a table or query.
struct FieldDef
{
    QString Name;
    FieldType Type = FieldType::Text;
    int Size = 0; ///< letters of a Text column; bytes of the others (1, 4, 8), 0 for Memo
    int Attributes = 0;
    QString DefaultValue; ///< expression text; empty for none
    bool AllowZeroLength = true;
    bool Required = false; ///< refuses null; columns of a primary key do so by being in it
};

/// An index of a table. Primary implies Unique and no nulls.
struct IndexDef
{
    QString Name;
    QStringList Fields;
    bool Primary = false;
    bool Unique = false;
};

/// A table as the catalogue describes it. A copy: changing it changes nothing until it is appended.
struct TableDef
{
    QString Name;
    int Attributes = 0;
    QString Connect;         ///< ";DATABASE=" and a full path for a link, else empty
    QString SourceTableName; ///< name of the table in the linked file
    std::vector<FieldDef> Fields;
    std::vector<IndexDef> Indexes;

    [[nodiscard]] bool isLink() const { return !Connect.isEmpty(); }
};

/// What a stored query does. Numbers of the former engine: keep.
enum class QueryType
{
    Select = 0,
    Crosstab = 16,
    Delete = 32,
    Update = 48,
    Append = 64,
    MakeTable = 80,
    Ddl = 96,
    SetOperation = 128,
};

struct ParameterDef
{
    QString Name;
    FieldType Type = FieldType::Text;
    bool isDeclared = true; ///< false: it takes a value of any kind as it is
};

} // namespace melovane
