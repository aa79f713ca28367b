#include "intake/folder_look.h"

#include "config/config_objects.h"
#include "config/counted_text.h"

#include <QElapsedTimer>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

FolderLook::FolderLook(const Files& files, const QStringList& folders)
    : m_walk(files, folders, m_skipped)
{}

bool FolderLook::step(std::chrono::milliseconds budget)
{
    QElapsedTimer spent;
    spent.start();
    while (!m_isOver) {
        const auto files = m_walk.next();
        m_isOver = !files.has_value();
        m_found += files ? int(files->size()) : 0;
        if (spent.hasExpired(budget.count())) {
            break;
        }
    }
    return !m_isOver;
}

QString FolderLook::text(const ConfigObjects& texts) const
{
    const QString key = m_isOver ? u"intake.look"_s : u"intake.look.on"_s;
    const QString kinds = kindsText(m_skipped);
    const QString found = countedText(texts, key, m_found);
    return kinds.isEmpty() ? found : found + u' ' + texts.text(u"intake.look.kinds", kinds);
}

} // namespace melovane
