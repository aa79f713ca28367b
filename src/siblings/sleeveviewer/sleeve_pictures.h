#pragma once

#include <QString>
#include <QStringList>

namespace melovane {

class CoverReader;
class Files;
struct SleeveTrack;

/// Pictures of one folder that are looked at; in a folder of holiday pictures the rest is left out.
inline constexpr qsizetype kMaxPictures = 200;

/// A cover's name as its file has it in front of ".jpg": the library holds both forms.
[[nodiscard]] QString withoutJpg(const QString& image);

/// The picture files of a track, the cover first: the one in the folder "Image" of the data folder
/// (also one that an import has put into "Image/temp"), without one the audio file itself when its
/// tag holds a picture; of a track whose cover the user took off none of the tag's. Then those
/// beside the audio file, whose usual names for covers stand in front. May take as long as a slow
/// disk takes. \param dataFolder also of the mappings of moved folders
[[nodiscard]] QStringList sleevePictures(Files& files,
                                         const CoverReader& tags,
                                         const QString& dataFolder,
                                         const SleeveTrack& track);

/// Whether a file of that name is looked at as a picture; others are audio files.
[[nodiscard]] bool isPictureName(const QString& name);

} // namespace melovane
