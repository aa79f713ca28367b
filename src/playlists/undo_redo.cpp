#include "playlists/undo_redo.h"

#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/system/files.h"
#include "platform/system/letter_case.h"
#include "platform/system/path_text.h"
#include "platform/system/text_file.h"
#include "platform/system/trim_blanks.h"

#include <QDeadlineTimer>

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Bytes; a longer file is none that a user wrote.
constexpr qint64 kLargestFile = qint64{1024} * 1024;

} // namespace

ModUndoRedo::ModUndoRedo(const Files& files, QString folder, Uptime uptime)
    : m_files(files)
    , m_folder(std::move(folder))
    , m_uptime(std::move(uptime))
{}

qint64 ModUndoRedo::systemUptime()
{
    return QDeadlineTimer::current().deadline();
}

void ModUndoRedo::loadFilter()
{
    try {
        const QString file = path::join(m_folder, u"Undo.conf");
        for (const QString& line :
             textfile::lines(textfile::decode(m_files.read(file, kLargestFile)))) {
            if (lowerCase(line).contains(u".an"_s)) {
                m_filter = u'%' + m_filter + trimBlanks(line) + u'%';
            }
        }
    } catch (const IoError&) {
        // No such file: nothing is switched on.
    }
    m_filter = m_filter.isEmpty() ? u"%undo.an%"_s : lowerCase(m_filter);
}

void ModUndoRedo::UndoSnapshot(Pnid list, Database& database, QStringView action)
{
    if (m_filter.isEmpty()) {
        loadFilter();
    }
    if (!m_filter.contains(u'%' + lowerCase(trimBlanks(action)) + u".an%"_s)) {
        return;
    }
    // Two snapshots of one millisecond still are two.
    m_lastId = std::max(m_uptime(), m_lastId + 1);
    try {
        const auto query = database.queryDefs().Item(u"insert_temp_pl_undo"_s);
        query->SetParameter(u"param_UndoID"_s, qint32(quint32(m_lastId)));
        query->SetParameter(u"param_PNID"_s, numberOf(list));
        query->SetParameter(u"param_UndoPos"_s, action.toString());
        query->Execute();
    } catch (const DbError&) {
        // The edit is worth more than its snapshot.
    }
}

} // namespace melovane
