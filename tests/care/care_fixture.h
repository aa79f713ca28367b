#pragma once

#include "care/beside_tools.h"
#include "care/missing_files.h"
#include "config/config_objects.h"
#include "config/melovane_configuration.h"
#include "platform/controls/progress_window.h"
#include "platform/linux/files_in.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/live_wait.h"
#include "support/answer_queue.h"
#include "support/suite_fixture.h"
#include "support/text_catalogue.h"

#include <QDir>

namespace melovane::test {

/// Does the work at once, between two questions whether it goes on.
class WaitAtOnce : public LiveWait
{
public:
    bool run(std::function<void()> work, const std::function<bool()>& goesOn) override
    {
        if (isDead) {
            while (goesOn()) {
            }
            return false;
        }
        static_cast<void>(goesOn());
        work();
        static_cast<void>(goesOn());
        return true;
    }

    bool isDead = false; ///< the disk does not answer: the work never begins
};

/// A suite with a library, music on the disk, and a user before it.
class CareTest : public SuiteFixture
{
protected:
    /// What the user sees of a long work; he ends it at the show of that number.
    class Progress : public ProgressWindow
    {
    public:
        explicit Progress(CareTest& test)
            : m_test(test)
        {}

        bool show(const QString& text, qint64, qint64) override
        {
            m_test.progress.append(text);
            return m_test.endsAt == 0 || m_test.progress.size() < m_test.endsAt;
        }

    private:
        CareTest& m_test;
    };

    CareTest()
        : settings(suite.makeSettings())
        , texts(suite.folders.paths(), suite.folders.profile(), suite.folders.files())
    {
        const CurrentFolder here(suite.folders.programFolder());
        MelovaneConfiguration::fill(texts);
    }

    [[nodiscard]] BesideTools beside() const
    {
        return {.makeEngine = [clock = &suite.clock] { return sqlite::makeEngine(*clock); },
                .makeFiles = [] { return std::make_unique<LinuxFiles>(); },
                .filesIn = filesIn};
    }

    [[nodiscard]] MissingFilesParts missingParts()
    {
        return {
            .engine = *suite.engine,
            .settings = *settings,
            .texts = texts,
            .files = suite.files,
            .warnings = dialogs,
            .wait = wait,
            .beside = beside(),
            .dataFolder = suite.dataFolder(),
            .openProgress = [this](const QString&) { return std::make_unique<Progress>(*this); },
            .tell = [this](const QString& text) { told.append(text); },
            .changed = [this] { ++changes; },
            .rebuildTrees = [this] { ++treesRebuilt; }};
    }

    /// Folder for music, with its closing separator.
    [[nodiscard]] QString music(const QString& name = {}) const
    {
        return disk.path() + u'/' + name;
    }

    /// A track whose file is on the disk; its content is its identifier.
    QString addTrack(NewTrack track, const QString& folder = {})
    {
        track.Path = music(folder);
        const QString fid = suite.library.add(track);
        const QString name = track.DName.isEmpty() ? fid + QStringLiteral(".mp3") : track.DName;
        disk.write(track.Path + name, fid.toUtf8());
        return fid;
    }

    [[nodiscard]] int del(const QString& fid) const
    {
        return suite.value(QStringLiteral("select del from db_all where fid='%1'").arg(fid))
            .toLong();
    }

    TempFolder disk;
    std::unique_ptr<GlobalSettings> settings;
    ConfigObjects texts;
    AnswerQueue dialogs;
    WaitAtOnce wait;
    QStringList progress;
    qsizetype endsAt = 0;
    QStringList told;
    int treesRebuilt = 0;
    int changes = 0;
};

} // namespace melovane::test
