#pragma once

#include "care/found_rules.h"

#include <QHash>

#include <array>
#include <memory>

namespace melovane {

struct MediaReading;

/// Which file belongs to which missing track: one call of findRules().
class FoundMatches
{
public:
    explicit FoundMatches(const FoundInput& input);
    ~FoundMatches();

    /// One for each missing track, in their order.
    [[nodiscard]] std::vector<FoundTrack> run();

private:
    /// What a file is known by, the surest first.
    enum Key : size_t
    {
        kNameFolderSize,
        kNameSize,
        kNameFolder,
        kName,
        kKeys
    };

    struct Reading
    {
        bool isRead = false;
        int milliseconds = 0;
        QString fid;
    };

    void indexFiles();
    void matchGiven();
    void voteForFolders();
    void matchByFolders();
    void readMatched();
    void matchByContent();
    void matchBySound(const std::vector<int>& likely);

    [[nodiscard]] bool isFree(int file) const;
    [[nodiscard]] static QString
    keyOf(Key key, const QString& name, const QString& folder, qint64 size);
    [[nodiscard]] const std::vector<int>& candidates(const MissingTrack& track) const;
    [[nodiscard]] int fileAt(const QString& folder, const QString& name) const;
    void take(int track, int file);
    void drop(int track);
    const Reading& read(int file);
    [[nodiscard]] std::vector<int> likelyFiles() const;
    [[nodiscard]] FoundEvidence evidenceOf(int track, int file);
    [[nodiscard]] bool hasKeptSound(const QString& fid, int file) const;

    const FoundInput& m_input;
    std::array<QHash<QString, std::vector<int>>, kKeys> m_files;
    QHash<QString, int> m_byPlace;     ///< files by folded full name
    QHash<QString, QString> m_folders; ///< new folder of each stored one
    std::vector<int> m_fileOf;         ///< of each track, -1 for none
    std::vector<int> m_trackOf;        ///< of each file, -1 for none
    std::vector<Reading> m_readings;
};

} // namespace melovane
