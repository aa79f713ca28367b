#pragma once

#include <QString>

#include <stdexcept>

namespace melovane {

/// A failed operation on a file or folder: which one, and the system's reason.
class IoError : public std::runtime_error
{
public:
    IoError(QString path, QString reason)
        : std::runtime_error((path + QStringLiteral(": ") + reason).toStdString())
        , m_path(std::move(path))
        , m_reason(std::move(reason))
    {}

    [[nodiscard]] const QString& path() const { return m_path; }

    [[nodiscard]] const QString& reason() const { return m_reason; }

private:
    QString m_path;
    QString m_reason;
};

} // namespace melovane
