#pragma once

#include "store/track_fields.h"

#include <QString>
#include <QStringView>

#include <optional>
#include <vector>

namespace melovane {

/// Reads fields of a track from the name of its file by a template such as "%I - %N".
///
/// %I artist, %N title, %A album, %G genre, %TO track number, %O anything, which is left out.
/// Markers have no letter case. "/" and "\" separate folders, which count from the file upwards.
/// The extension of the file is not part of its name. A marker takes at least one letter and ends
/// where the text behind it begins for the first time, the last one of a name where it begins for
/// the last time; %TO takes decimal digits alone.
class NameReader
{
public:
    /// What was read for a field.
    struct Read
    {
        TrackField field;
        QString text; ///< blanks around are cut, a track number has no 0 in front
    };

    /// \param underscores read "_" in what a marker takes as a blank
    explicit NameReader(const QString& text, bool underscores);

    /// False for a template without a field, with a field twice, or with two markers that nothing
    /// separates: where one ends would be a guess.
    [[nodiscard]] bool isUsable() const { return m_isUsable; }

    /// Nothing when the place does not fit the template.
    /// \param folder of the file, with its separator \param name of the file with its extension
    [[nodiscard]] std::optional<std::vector<Read>> read(QStringView folder, QStringView name) const;

    /// The fields that the template reads, from left to right.
    [[nodiscard]] std::vector<TrackField> fields() const;

private:
    struct Token
    {
        enum class Kind
        {
            Text,
            Field,
            Number,
            Anything
        };

        Kind kind = Kind::Text;
        QString text; ///< of Kind::Text
        TrackField field = TrackField::Titel;
    };

    using Part = std::vector<Token>; ///< one name between two separators

    [[nodiscard]] static Part tokens(const QString& text);
    [[nodiscard]] bool isClear(const Part& part) const;
    bool readPart(const Part& part, QStringView name, std::vector<Read>& result) const;
    [[nodiscard]] Read reading(const Token& token, QStringView taken) const;

    std::vector<Part> m_parts;
    bool m_underscores;
    bool m_isUsable = false;
};

} // namespace melovane
