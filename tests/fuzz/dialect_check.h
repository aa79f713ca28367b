#pragma once

#include "fuzz/shipped_names.h"

namespace melovane::fuzz {

/// What must hold of every text that is given to the translator, whoever wrote it.
class DialectCheck
{
public:
    /// Translates the text and looks at what came out:
    /// - an error of the engine with a text, or SQLite text that SQLite takes as one statement;
    /// - it reads only tables that the text reaches, writes only what the translation says, calls
    ///   only functions of the dialect, and changes nothing but rows;
    /// - it runs without a fault of SQLite, and a keyed set gives the same rows by its keys.
    /// \return what went wrong; empty when all holds
    [[nodiscard]] QString check(const QString& text);

    /// The second half of check(): what a translation of that text may be.
    [[nodiscard]] QString judge(const QString& text, const sqlite::Translation& translation);

    /// Texts that were translated, and those that were refused.
    [[nodiscard]] int translated() const { return m_translated; }

    [[nodiscard]] int refused() const { return m_refused; }

private:
    [[nodiscard]] QString checkTranslation(const QString& text,
                                           const sqlite::Translation& translation);
    [[nodiscard]] QString checkDefinition(const QString& text,
                                          const sqlite::Translation& translation);
    [[nodiscard]] QString checkKeys(const QString& text,
                                    const sqlite::Translation& translation) const;

    ShippedNames m_names;
    int m_translated = 0;
    int m_refused = 0;
};

} // namespace melovane::fuzz
