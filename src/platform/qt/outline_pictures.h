#pragma once

#include <QPixmap>
#include <QString>

#include <vector>

namespace melovane {

/// The pictures that stand in rows, read from their files as large as they are shown; the last few
/// are kept.
class OutlinePictures
{
public:
    /// In proportion, as wide as `room` units at most, and never larger than it is.
    /// \param scale device pixels of a unit
    /// Null when there is no such picture, or it is too large to be read.
    [[nodiscard]] QPixmap picture(const QString& file, int room, double scale);

private:
    struct Kept
    {
        QString key; ///< file, its date, and the width it was made for
        QPixmap picture;
    };

    std::vector<Kept> m_kept; ///< the one asked for last is the last
};

} // namespace melovane
