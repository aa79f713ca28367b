#pragma once

#include <QString>

namespace melovane {

/// What a warning asks. The numbers are those that callers of the suite use: keep.
enum class WarningType
{
    Note = 0,     ///< one OK button
    Question = 4, ///< yes and no
    Stop = 16,    ///< as Note
};

/// The numbers of the answers: keep.
enum class WarningAnswer
{
    Left = -1, ///< the dialog was left without pressing one of its buttons
    Ok = 1,
    Yes = 6,
    No = 7,
};

/// The one dialog for warnings and questions.
class Warnings
{
public:
    virtual ~Warnings() = default;

    /// Shows a message and waits for its answer.
    ///
    /// \param messageKey    an entry of this name in the settings file replaces text or title;
    ///                      empty for none
    /// \param suppressName  the user may choose not to see messages of this name again, and then
    ///                      gets Ok or Yes without being asked, whatever he pressed when he
    ///                      chose so; empty offers no such choice
    virtual WarningAnswer ShowWarning(const QString& text,
                                      WarningType type,
                                      const QString& title,
                                      const QString& messageKey = {},
                                      const QString& suppressName = {}) = 0;
};

} // namespace melovane
