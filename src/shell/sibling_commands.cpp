#include "shell/sibling_commands.h"

#include "config/config_objects.h"
#include "shell/sibling_control.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

SiblingCommands::SiblingCommands(SiblingControl& siblings,
                                 const ConfigObjects& texts,
                                 std::function<void(const QString& text)> show)
    : m_siblings(siblings)
    , m_texts(texts)
    , m_show(std::move(show))
{}

void SiblingCommands::importMusic()
{
    tellUnless(m_siblings.startImport(0), u"mediaintake"_s);
}

void SiblingCommands::editTags()
{
    tellUnless(m_siblings.startTagEditor(), u"tagbench"_s);
}

void SiblingCommands::viewCovers()
{
    tellUnless(m_siblings.startSleeveViewer({}), u"SleeveViewer"_s);
}

void SiblingCommands::rebuildTrees()
{
    tellUnless(m_siblings.startRebuildTree(), u"Task.RebuildTree"_s);
}

void SiblingCommands::findTempo(const QString& cmd, const QString& fid, const QString& plid)
{
    tellUnless(m_siblings.StartBeatGauge(cmd, fid, plid), u"beatgauge"_s);
}

void SiblingCommands::tellUnless(bool isStarted, const QString& program) const
{
    if (!isStarted) {
        m_show(m_texts.text(u"status.sibling.missing"_s, program));
    }
}

} // namespace melovane
