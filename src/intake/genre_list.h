#pragma once

#include <QHash>
#include <QString>

namespace melovane {

class Database;

/// The genres of the table `genre`, by name and by number.
class GenreList
{
public:
    /// Reads all rows but 255, which stands for no genre. Of equal names or numbers the first
    /// counts. \throws DbError
    void LoadGenre(Database& database);

    void add(int id, const QString& name);

    /// The genre that a tag's text means: "Rock", "17", "(17)", "(17)Rock" and "(17)(18)" are
    /// understood. A name in the list is spelt as the list spells it, any other text stays as it
    /// is. A number of a tag (0 to 255) that the list lacks gives an empty text. Of several genres
    /// joined by "; " each is one such text; those that give none are left out.
    [[nodiscard]] QString nameOf(const QString& tagText) const;

    /// The number of a genre of that name, without regard to letter case; 255 for a name that the
    /// list lacks.
    [[nodiscard]] int numberOf(const QString& name) const;

private:
    [[nodiscard]] QString nameOfOne(const QString& tagText) const;
    [[nodiscard]] QString byName(const QString& name) const;
    [[nodiscard]] QString byNumber(const QString& digits) const;

    QHash<QString, QString> m_byName; ///< upper case to spelling
    QHash<QString, int> m_numbers;    ///< by name in upper case
    QHash<int, QString> m_byNumber;
};

} // namespace melovane
