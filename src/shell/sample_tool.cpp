#include "shell/sample_tool.h"

#include "bus/suite_messages.h"
#include "playlistfiles/kiv_interface.h"
#include "shell/sibling_control.h"

#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

SampleTool::SampleTool(SampleToolParts parts)
    : m_parts(std::move(parts))
{}

void SampleTool::edit(const MlvPlaylistDetail& entry, qint32 replyTo)
{
    KivInterface state(m_parts.files, m_parts.dataFolder, m_parts.programFolder);
    state.setEntry(entry);
    state.replyTo = replyTo;
    state.KivSave();
    if (!m_parts.suite.editSample() && !m_parts.siblings.startSampleTool()) {
        m_parts.tellMissing(u"Melovanekiv"_s);
    }
}

SampleEdit SampleTool::read() const
{
    KivInterface state(m_parts.files, m_parts.dataFolder, m_parts.programFolder);
    state.KivLoad();
    return {state.PLID, state.FID, state.FrameStart, state.FrameStop};
}

} // namespace melovane
