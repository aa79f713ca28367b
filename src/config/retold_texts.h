#pragma once

#include <QHash>
#include <QRegularExpression>
#include <QString>

#include <vector>

namespace melovane {

class ConfigObjects;

/// What a catalogue said before another language was chosen, for texts that stand on the screen
/// already and whose names nobody knows any more.
class RetoldTexts
{
public:
    /// Remembers what the catalogue says now.
    explicit RetoldTexts(const ConfigObjects& catalogue);

    /// From here on retold() gives the words that the catalogue has now.
    void become(const ConfigObjects& catalogue);

    /// A text of the former language in the present one, also with values in it; one that the
    /// catalogue did not hold as it stands. Where two texts were alike the first one counts.
    [[nodiscard]] QString retold(const QString& shown) const;

private:
    /// A text with values in it, "$1 Titel".
    struct Pattern
    {
        QRegularExpression former;
        QString numbers; ///< of the values in their order, "12"
        QString present;
    };

    void addPattern(const QString& former, const QString& present);

    QHash<QString, QStringList> m_before; ///< by name: text, second text, tool tip
    QHash<QString, QString> m_whole;
    std::vector<Pattern> m_patterns;
};

} // namespace melovane
