#pragma once

#include <QByteArray>

namespace melovane {

/// Makes pictures that other programs and people have made into those that the suite keeps.
class PictureMaker
{
public:
    virtual ~PictureMaker() = default;

    /// A JPEG no wider than `mostWidth`, with the proportions of the picture and never enlarged,
    /// turned as its camera says; what is transparent becomes white. Empty for anything but JPEG,
    /// PNG, GIF and BMP by content, for a damaged picture, and for sides above 12,000. Any thread
    /// may ask.
    ///
    /// \param quality 0 to 100
    [[nodiscard]] virtual QByteArray
    jpeg(const QByteArray& picture, int mostWidth, int quality) const = 0;
};

} // namespace melovane
