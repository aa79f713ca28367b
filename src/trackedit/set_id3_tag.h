#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <functional>

namespace melovane {

class Environment;
class Files;

/// The tail of an audio file with its tag blocks, and small questions to the system.
///
/// For the tag tools of the suite, which share these bytes; nothing in the console calls it.
namespace Mod_Set_ID3_TAG {

/// Bytes of the tail: a private block of 46 and a tag block of 128. Keep, the suite's tag tools
/// find the blocks by these lengths.
inline constexpr qsizetype kPrivateLength = 46;
inline constexpr qsizetype kTagLength = 128;
inline constexpr qsizetype kTailLength = kPrivateLength + kTagLength;

/// What stands in the tail. Texts are single-byte on the disc: letters beyond Latin-1 become "?",
/// what is too long is cut.
struct FileTail
{
    QByteArray privateRest; ///< up to 41 bytes behind the mark and the number of the private block
    QString Title;          ///< 30 letters
    QString Artist;         ///< 30
    QString Album;          ///< 30
    QString Year;           ///< 4
    QString Comment;        ///< 30
    quint8 Genre = 255;     ///< 255 is none
};

/// The 174 bytes of a tail: "AUD", the number 300 in 16 bits, low byte first, the rest of the
/// private block; "TAG" and the tag's fields. What is not filled is zero.
[[nodiscard]] QByteArray tailBytes(const FileTail& tail);

/// Where a new tail is written into a file, counted from 0.
///
/// \param last the last 174 bytes of the file, \param size its length
/// A tail with the private block is overwritten, a tag block alone is replaced (the file grows by
/// 46). In a file with neither the first byte of the tail takes the place of the last byte of the
/// audio: one off, and so agreed among the tools.
[[nodiscard]] qint64 tailOffset(QByteArrayView last, qint64 size);

/// Writes a tail into a file and keeps the file's date; write protection is cleared. The file is
/// replaced as a whole, so a failure leaves it as it was. False for any error, and for a file
/// shorter than a tail.
[[nodiscard]] bool writeFileTail(Files& files, const QString& path, const FileTail& tail);

/// The two parts of the store of short texts.
enum class RootKey
{
    CurrentUser,
    LocalMachine
};

/// Stores a text under "Software\Melovane\" and a program's name for the current user; an empty one
/// as one blank. False for any other key, machine-wide ones included, and when it did not arrive.
[[nodiscard]] bool writeRegistryText(Environment& environment,
                                     RootKey root,
                                     const QString& path,
                                     const QString& name,
                                     const QString& text);

/// A text of a program's key as above, or of "Software\Melovane" for the machine; up to its first
/// zero character and at most 1023 letters. Empty when there is none. A number reads as its decimal
/// digits.
[[nodiscard]] QString readRegistryValue(const Environment& environment,
                                        RootKey root,
                                        const QString& path,
                                        const QString& name);

/// Whether a window is one of the suite's controls: its class name, at most 249 letters of it, is
/// longer than one letter and holds "AfxOleControl42".
///
/// \param classNameOf gives the class name of a handle, empty when there is no such window
[[nodiscard]] bool isControlWindow(const std::function<QString(int)>& classNameOf, int handle);

} // namespace Mod_Set_ID3_TAG
} // namespace melovane
