#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <optional>

namespace melovane {

/// What a list file says about one track. Numbers that a line lacks are 0, texts empty.
struct M3uRecord
{
    QString FID;
    QString Titel, Interpret, Genre, BPM;
    int Volume = 0;
    int Pitch = 0;
    int DTimeMsec = 0;
    int FrameStart = 0; ///< frames
    int FrameStop = 0;
    int MixTime = 0; ///< milliseconds
    QString MixIn, MixOut, eq;
    QString file; ///< the path line up to its first "|"
    QString line; ///< all of the path line
};

/// The lines of a list file, whatever its bytes are.
///
/// A file with the mark of UTF-16, or in UTF-16 without it, is taken as such. Otherwise each line
/// stands for itself: UTF-8 when it is valid, else Windows-1252; so one line written by another
/// program never spoils the umlauts of all others. CR LF, LF and CR end a line.
class M3uLines
{
public:
    explicit M3uLines(const QByteArray& bytes);

    /// Nothing behind the last line.
    [[nodiscard]] std::optional<QString> next();

    /// Bytes read so far and of all, for progress.
    [[nodiscard]] qint64 position() const { return m_at; }

    [[nodiscard]] qint64 size() const { return m_bytes.size(); }

private:
    QByteArray m_bytes;
    qsizetype m_at = 0;
};

/// Puts the lines of a list file together to records: plain M3U, the suite's own lines, and lists
/// with "|" behind the path. A record ends with its path line; what is told behind the last path
/// line belongs to nothing.
class M3uParser
{
public:
    /// The record that this line ends; nothing for a line that tells something, or for none.
    [[nodiscard]] std::optional<M3uRecord> take(const QString& line);

private:
    void takeTitle(const QString& values);
    void takeVolume(const QString& values);
    void takeMix(const QString& values);

    M3uRecord m_record;
};

} // namespace melovane
