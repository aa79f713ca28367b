#include "care/recycler.h"

#include "config/config_objects.h"
#include "config/counted_text.h"
#include "config/global_settings.h"
#include "config/moment_text.h"
#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/db/sql_text.h"
#include "platform/system/live_wait.h"
#include "platform/system/timers.h"

#include <QHash>

#include <cerrno>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

/// Files on their way back. One thread calls run(), another one everything else, at any time.
class Recycler::Run
{
public:
    Run(RecycleTools tools, std::vector<RecycledFile> files)
        : m_tools(std::move(tools))
        , m_files(std::move(files))
    {}

    void run()
    {
        const std::unique_ptr<Files> disk = m_tools.makeFiles();
        RecycleFolder folder = folderOver(*disk);
        for (size_t i = 0; i < m_files.size() && goesOn(); ++i) {
            std::optional<IoError> refusal;
            try {
                folder.putBack(m_files[i], [this](qint64) { return goesOn(); });
            } catch (const IoError& error) {
                refusal = error;
            }
            const QMutexLocker lock(&m_mutex);
            ++m_done;
            if (refusal) {
                m_refusals.insert(m_files[i].to, *refusal);
            } else {
                m_back.push_back(m_files[i]);
            }
        }
    }

    void forget(const std::vector<RecycledFile>& files) const
    {
        const std::unique_ptr<Files> disk = m_tools.makeFiles();
        try {
            folderOver(*disk).forget(files);
        } catch (const IoError&) {
            // Lines of files that are back do nothing, and are not offered any more.
        }
    }

    void end()
    {
        const QMutexLocker lock(&m_mutex);
        m_isEnded = true;
    }

    /// Files that came back since the last call.
    [[nodiscard]] std::vector<RecycledFile> takeBack()
    {
        const QMutexLocker lock(&m_mutex);
        return std::exchange(m_back, {});
    }

    [[nodiscard]] std::pair<qint64, qint64> progress()
    {
        const QMutexLocker lock(&m_mutex);
        return {m_done, qint64(m_files.size())};
    }

    /// Why files did not come back, by their place in the recycle folder.
    [[nodiscard]] QHash<QString, IoError> refusals()
    {
        const QMutexLocker lock(&m_mutex);
        return m_refusals;
    }

private:
    [[nodiscard]] RecycleFolder folderOver(Files& files) const
    {
        return RecycleFolder(
            {files, m_tools.clock, m_tools.dataFolder, m_tools.homeFolder, m_tools.systemName});
    }

    [[nodiscard]] bool goesOn()
    {
        const QMutexLocker lock(&m_mutex);
        return !m_isEnded;
    }

    const RecycleTools m_tools;
    const std::vector<RecycledFile> m_files;

    QMutex m_mutex; ///< of all below
    std::vector<RecycledFile> m_back;
    QHash<QString, IoError> m_refusals;
    qint64 m_done = 0;
    bool m_isEnded = false;
};

Recycler::Recycler(RecyclerParts parts, RecyclerForm& form)
    : m_parts(std::move(parts))
    , m_form(form)
{}

std::unique_ptr<Database> Recycler::open() const
{
    return m_parts.engine.OpenDatabase(m_parts.settings.DbName());
}

void Recycler::Show()
{
    m_view.step.clear();
    read();
    if (m_view.rows.empty() && m_view.step.isEmpty()) {
        m_view.step = m_parts.texts.text(u"care.recycler.empty"_s);
    }
    m_form.show(m_view);
}

/// Empty for a disk that does not answer before the user has enough of it.
std::vector<RecycledFile> Recycler::readFolders()
{
    const auto files = std::make_shared<std::vector<RecycledFile>>();
    const auto work = [files, tools = m_parts.tools] {
        const std::unique_ptr<Files> disk = tools.makeFiles();
        try {
            *files = RecycleFolder(
                         {*disk, tools.clock, tools.dataFolder, tools.homeFolder, tools.systemName})
                         .all();
        } catch (const IoError&) {
            // A side record that cannot be read offers nothing.
        }
    };
    m_isCancelled = false;
    const bool isRead = m_parts.wait.run(work, [this] {
        m_parts.loop.turn();
        return !m_isCancelled;
    });
    return isRead ? std::move(*files) : std::vector<RecycledFile>();
}

void Recycler::read()
{
    m_files.clear();
    m_view.rows.clear();
    m_view.isRunning = true;
    const std::vector<RecycledFile> files = readFolders();
    m_view.isRunning = false;
    try {
        const auto database = open();
        for (const RecycledFile& file : files) {
            const bool hasRow =
                !database
                     ->OpenRecordset(u"select fid from db_all where fid="_s + sql::text(file.fid))
                     ->Eof();
            // A file that the script has put back may still lack its row.
            if (file.isHere || !hasRow) {
                m_files.push_back(file);
                m_view.rows.push_back(
                    {file.title, file.from, momentText(m_parts.texts, file.moment),
                     file.isHere ? QString() : m_parts.texts.text(u"care.recycler.rowonly"_s)});
            }
        }
    } catch (const DbError& error) {
        m_view.step = m_parts.failed(error);
    }
}

void Recycler::putBackAll()
{
    std::set<int> all;
    for (size_t i = 0; i < m_files.size(); ++i) {
        all.insert(int(i));
    }
    putBack(all);
}

void Recycler::putBack(const std::set<int>& rows)
{
    std::vector<RecycledFile> files;
    for (const int row : rows) {
        if (row >= 0 && size_t(row) < m_files.size()) {
            files.push_back(m_files[size_t(row)]);
        }
    }
    if (files.empty() || m_view.isRunning) {
        return;
    }
    m_isCancelled = false;
    m_view.isRunning = true;
    // It may outlive the wait, when a disk does not answer.
    const auto run = std::make_shared<Run>(m_parts.tools, std::move(files));
    QString fault;
    m_tracks = 0;
    try {
        moveAndWrite(run);
    } catch (const DbError& error) {
        fault = m_parts.failed(error);
        run->end();
    }
    m_view.isRunning = false;
    showEnd(*run, fault);
    if (m_tracks > 0) {
        m_parts.changed();
        m_parts.rebuildTrees();
    }
}

void Recycler::moveAndWrite(const std::shared_ptr<Run>& run)
{
    std::vector<RecycledFile> back;
    const auto write = [&] {
        const std::vector<RecycledFile> files = run->takeBack();
        writeRows(files);
        back.insert(back.end(), files.begin(), files.end());
    };
    const bool isOver = m_parts.wait.run([run] { run->run(); },
                                         [&] {
                                             write();
                                             return goesOn(*run);
                                         });
    write();
    run->end();
    if (isOver && !back.empty()) {
        static_cast<void>(
            m_parts.wait.run([run, back] { run->forget(back); }, [&] { return goesOn(*run); }));
    }
}

bool Recycler::goesOn(Run& run)
{
    const auto [done, whole] = run.progress();
    m_view.step = m_parts.texts.text(u"care.recycler.progress"_s, done, whole);
    m_view.percent = whole > 0 ? int(100 * done / whole) : 0;
    m_form.show(m_view);
    m_parts.loop.turn();
    if (m_isCancelled) {
        run.end();
    }
    return !m_isCancelled;
}

/// The rows of files that are back, a thousand tracks at a time.
void Recycler::writeRows(const std::vector<RecycledFile>& files)
{
    constexpr size_t kAtOnce = 1000;
    for (size_t begin = 0; begin < files.size(); begin += kAtOnce) {
        const auto database = open();
        Transaction rows(*database);
        int tracks = 0;
        for (size_t i = begin; i < std::min(begin + kAtOnce, files.size()); ++i) {
            tracks += bringBack(*database, files[i].rows).hasTrack ? 1 : 0;
        }
        rows.commit();
        m_tracks += tracks;
    }
}

void Recycler::showEnd(Run& run, const QString& fault)
{
    read();
    const QHash<QString, IoError> refusals = run.refusals();
    for (size_t i = 0; i < m_files.size(); ++i) {
        if (const auto refusal = refusals.constFind(m_files[i].to); refusal != refusals.cend()) {
            m_view.rows[i].note = refusal->number() == EEXIST
                                      ? m_parts.texts.text(u"care.recycler.taken"_s)
                                      : refusal->reason();
        }
    }
    m_view.percent = 0;
    m_view.step =
        !fault.isEmpty() ? fault : countedText(m_parts.texts, u"care.recycler.back"_s, m_tracks);
    m_form.show(m_view);
}

void Recycler::cancel()
{
    if (m_view.isRunning) {
        m_isCancelled = true;
    } else {
        m_form.close();
    }
}

} // namespace melovane
