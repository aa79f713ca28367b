#pragma once

#include <QString>

namespace melovane {

class CoverReader;
class Files;
class KeptCovers;
class PictureMaker;

/// What covers are taken out of tags with; all of it outlives this.
struct CoverSources
{
    Files& files;
    QString dataFolder;
    const CoverReader& reader;
    const PictureMaker& pictures;
};

/// Writes the cover of an audio file to the picture file of that image name. False when there is
/// none, or when it cannot be written.
[[nodiscard]] bool
takeCoverOut(const CoverSources& sources, const QString& file, const QString& image, int mostWidth);

/// To be called before a track gets another cover: what the new one will replace is kept for who
/// takes the change back, as a picture and as it stands in the tag.
///
/// \param image the column `Image` \param file the audio file as it lies now
/// The name of the picture file that keeps the cover that stood in the tag alone; empty when there
/// was none, or when the track has a picture file. Any thread may call it.
[[nodiscard]] QString keepFormerCover(const CoverSources& sources,
                                      KeptCovers& kept,
                                      const QString& fid,
                                      const QString& image,
                                      const QString& file);

} // namespace melovane
