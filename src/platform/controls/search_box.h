#pragma once

#include <QString>
#include <QStringList>

namespace melovane {

/// A line to type a search into.
class SearchBox
{
public:
    virtual ~SearchBox() = default;

    [[nodiscard]] virtual QString text() const = 0;

    /// Counts as a change of the text, as typing does; the insertion point goes to the end.
    virtual void setText(const QString& text) = 0;

    /// The texts that can be chosen from its list. Setting them keeps what is typed.
    [[nodiscard]] virtual QStringList list() const = 0;
    virtual void setList(const QStringList& texts) = 0;

    /// Gives it the keyboard.
    virtual void focus() = 0;
};

} // namespace melovane
