#pragma once

#include <QString>
#include <QStringList>

namespace melovane {

/// What the markers of a path template stand for; a null column is the empty text.
struct TemplateValues
{
    QString GroupName; ///< %GN
    QString Album;     ///< %A
    QString Interpret; ///< %I
    QString Titel;     ///< %N
    QString Genre;     ///< %G
    QString plname;    ///< %P, name of the playlist
    QString DName;     ///< %O, shown without its extension
    QString Track;     ///< %TO, the number at its beginning
};

/// Makes the path of each copy of an export from a template such as "%P/%TP_%I - %N".
///
/// Markers have no letter case. "/" and "\" separate folders; one at an end has no effect, and a
/// folder without a name is left out. A value is never read as a template again and never opens a
/// folder. Whatever the values hold, the path stays below the folder that it is joined to, has no
/// control characters, and each of its names fits into the 255 bytes of a file system.
class Template2Path
{
public:
    explicit Template2Path(QString text);

    /// The relative path of the next row, with the platform's separator and the extension ".mp3".
    ///
    /// \param position of the row in its list, from 1
    /// \param count rows of the list; it gives %TP its digits, at least two
    /// A Track of 0 takes the next number of a counter of this object, but only where %TO occurs.
    [[nodiscard]] QString path(const TemplateValues& values, qint64 position, qint64 count);

    /// The path of a sample: both numbers are 01.
    [[nodiscard]] QString preview(const TemplateValues& sample) const;

    /// The templates that the user can choose from, in their order.
    [[nodiscard]] static const QStringList& offered();

    /// What may be typed as a template: without : * ? < > and |.
    [[nodiscard]] static QString typeable(QString text);

private:
    [[nodiscard]] QString
    expanded(const TemplateValues& values, const QString& position, const QString& track) const;

    QString m_text;
    bool m_asksForTrack;
    qint64 m_counter = 0;
};

/// A text as one name of a path: each of " / \ : * ? < > | and each control character becomes "_",
/// blanks around are cut. Nothing but dots becomes as many "_".
///
/// \param room bytes that must stay free for what is appended; a longer name is cut
[[nodiscard]] QString nameForPath(const QString& text, qsizetype room = 0);

} // namespace melovane
