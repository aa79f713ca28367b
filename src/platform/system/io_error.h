#pragma once

#include <QString>

#include <stdexcept>

namespace melovane {

/// A failed operation on a file or folder: which one, and the system's reason.
class IoError : public std::runtime_error
{
public:
    /// \param number of the system's error; 0 when it was not the system that refused
    IoError(QString path, QString reason, int number = 0)
        : std::runtime_error((path + QStringLiteral(": ") + reason).toStdString())
        , m_path(std::move(path))
        , m_reason(std::move(reason))
        , m_number(number)
    {}

    [[nodiscard]] const QString& path() const { return m_path; }

    [[nodiscard]] const QString& reason() const { return m_reason; }

    [[nodiscard]] int number() const { return m_number; }

private:
    QString m_path;
    QString m_reason;
    int m_number;
};

} // namespace melovane
