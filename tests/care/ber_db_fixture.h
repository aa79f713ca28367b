#pragma once

#include "care/ber_db.h"
#include "care/care_fixture.h"
#include "care/recycler.h"
#include "platform/db/db_error.h"
#include "platform/linux/system_names.h"
#include "platform/system/timers.h"
#include "platform/system/worker.h"

#include <QFile>

namespace melovane::test {

/// Files whose volume is a folder of the test.
class FilesOfOneVolume : public LinuxFiles
{
public:
    explicit FilesOfOneVolume(QString root)
        : m_root(std::move(root))
    {}

    [[nodiscard]] VolumeFacts volume(const QString&) const override
    {
        return {VolumeKind::Fixed, QStringLiteral("MUSIC"), m_root};
    }

    void rename(const QString& source, const QString& target) override
    {
        if (source.contains(QLatin1String("stubborn"))) {
            throw IoError(source, QStringLiteral("Permission denied"), EACCES);
        }
        LinuxFiles::rename(source, target);
    }

private:
    QString m_root;
};

/// The cleaning before a user whose hand the test is.
class BerDbTest : public CareTest
{
protected:
    /// Keeps what is shown.
    class Form : public BerDbForm
    {
    public:
        void show(const BerDbView& view) override { shown = view; }

        void close() override { isClosed = true; }

        BerDbView shown;
        bool isClosed = false;
    };

    /// Each turn of the window is one of the user, too.
    class Loop : public MessageLoop
    {
    public:
        [[nodiscard]] std::unique_ptr<Timer> makeTimer(std::chrono::milliseconds,
                                                       std::function<void()>) override
        {
            return {};
        }

        void turn() override
        {
            ++turns;
            if (whenTurned) {
                whenTurned();
            }
        }

        int turns = 0;
        std::function<void()> whenTurned;
    };

    class AtOnce : public Worker
    {
    public:
        void run(std::function<void()> work, std::function<void()> done) override
        {
            work();
            later = std::move(done);
            if (!isSlow) {
                later();
            }
        }

        bool isSlow = false;
        std::function<void()> later;
    };

    BerDbTest()
        : dialog(parts(), form)
    {}

    [[nodiscard]] BerDbParts parts()
    {
        return {.engine = *suite.engine,
                .settings = *settings,
                .texts = texts,
                .clock = suite.clock,
                .loop = loop,
                .wait = wait,
                .worker = worker,
                .makeEngine = beside().makeEngine,
                .recycler = {.makeFiles =
                                 [root = disk.path()] {
                                     return std::make_unique<FilesOfOneVolume>(root);
                                 },
                             .clock = suite.clock,
                             .dataFolder = suite.dataFolder(),
                             .homeFolder = home.path(),
                             .systemName =
                                 [](const QString& path) { return linuxnames::encode(path); }},
                .backUp =
                    [this] {
                        ++backups;
                        return wantsRun;
                    },
                .changed = [this] { ++changes; },
                .rebuildTrees = [this] { ++treesRebuilt; },
                .failed =
                    [this](const DbError& error) {
                        told.append(error.text());
                        return QStringLiteral("failed");
                    }};
    }

    /// The way back of what a cleaning has removed.
    [[nodiscard]] RecyclerParts recyclerParts()
    {
        return {.engine = *suite.engine,
                .settings = *settings,
                .texts = texts,
                .loop = loop,
                .wait = wait,
                .tools = parts().recycler,
                .changed = [this] { ++changes; },
                .rebuildTrees = [this] { ++treesRebuilt; },
                .failed = [](const DbError&) { return QStringLiteral("failed"); }};
    }

    /// Ticks these boxes and presses OK.
    void run(const std::vector<int>& boxes)
    {
        dialog.Show();
        for (const int box : boxes) {
            dialog.checkBer(box, true);
        }
        dialog.cmdOk();
    }

    [[nodiscard]] qint64 count(const QString& from) const
    {
        return suite.value(QStringLiteral("select count(*) from ") + from).toInt64();
    }

    TempFolder home;
    Form form;
    Loop loop;
    AtOnce worker;
    int backups = 0;
    bool wantsRun = true; ///< what the user says when there is no backup
    frmBerDB dialog;
};

} // namespace melovane::test
