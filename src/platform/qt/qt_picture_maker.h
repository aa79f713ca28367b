#pragma once

#include "platform/media/picture_maker.h"

namespace melovane {

/// Pictures by the readers of the toolkit.
class QtPictureMaker : public PictureMaker
{
public:
    [[nodiscard]] QByteArray
    jpeg(const QByteArray& picture, int mostWidth, int quality) const override;
};

} // namespace melovane
