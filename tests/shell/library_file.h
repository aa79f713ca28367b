#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

namespace melovane::test {

/// A library's file, looked at from outside the program: with no connection between two calls.
class LibraryFile
{
public:
    explicit LibraryFile(QString name)
        : m_name(std::move(name))
    {}

    [[nodiscard]] const QString& name() const { return m_name; }

    /// A sum over the file and what waits beside it to be taken into it.
    [[nodiscard]] QByteArray bytes() const;

    /// True when no program has it open, or has left something beside it.
    [[nodiscard]] bool isAlone() const;

    /// A sum over the rows of each table, by its name.
    [[nodiscard]] QMap<QString, QByteArray> tables() const;

    /// The rows of a statement in the words of the file's engine, columns joined by blanks.
    [[nodiscard]] QStringList rows(const QByteArray& statement) const;

    [[nodiscard]] int number(const QByteArray& statement) const;

private:
    QString m_name;
};

} // namespace melovane::test
