#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace melovane {

/// A text of sections and keys in memory, which changes single lines and leaves all others as they
/// are: comments, unknown lines, order, each line's own end.
///
/// Sections and keys have no regard to case. Several sections of one name count as one. The first
/// of equal keys wins. Blanks around section, key and value are cut, and one pair of quotes ("" or
/// '') around a value is dropped. The section with the empty name is what stands in front of the
/// first section line. Touches no disk.
///
/// A value is one line of the file. Line feed, carriage return and zero character are written as
/// U+241B followed by "n", "r" or "0", U+241B itself twice; so every text comes back as it went in
/// and none can make a line of its own.
class IniText
{
public:
    IniText() = default;
    explicit IniText(const QString& text);

    [[nodiscard]] QString toText() const;

    [[nodiscard]] std::optional<QString> value(const QString& section, const QString& key) const;

    /// "key=value" of every key line, in the order of the text, equal keys included.
    [[nodiscard]] QStringList section(const QString& section) const;

    /// Sets a key in its place, behind the last line of its section, or in a new section at the
    /// end. A value with blanks at an end or in quotes gets a pair of quotes around it.
    /// False, and no change, for a name that cannot stand in such a text (see isUsable).
    bool set(const QString& section, const QString& key, const QString& value);

    /// Takes away every line of that key. False for an unusable name alone.
    bool remove(const QString& section, const QString& key);

    /// Whether the names can be written so that they read back: no line ends, no "]" in the
    /// section, a key that is not empty, has no "=" and begins with neither ";" nor "[".
    [[nodiscard]] static bool isUsable(const QString& section, const QString& key);

private:
    struct Line
    {
        QString text;
        QString end;           ///< "\r\n", "\n", "\r" or empty at the end of the text
        int section = 0;       ///< index into m_sections
        qsizetype equals = -1; ///< place of "=" in a key line, else -1

        [[nodiscard]] bool isKey() const { return equals >= 0; }

        [[nodiscard]] QString key() const;
        [[nodiscard]] QString value() const;
    };

    void index();
    void insert(size_t at, const QString& text, int section);
    [[nodiscard]] int findLine(const QString& section, const QString& key) const;
    [[nodiscard]] QString lineEnd() const;
    size_t makeSection(const QString& section);

    std::vector<Line> m_lines;
    QStringList m_sections{QString()}; ///< folded names; number 0 stands before the first section
    QHash<QString, int> m_keys;        ///< folded section and key to the first line of it
};

} // namespace melovane
