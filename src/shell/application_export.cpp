// The export window and the sample tool, put together with the rest of the console.
#include "bus/message_numbers.h"
#include "playlistfiles/m3u_errors.h"
#include "shell/application.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

void Application::exportList(int list)
{
    m_export.SetPNID(Pnid(list));
    m_export.Show();
}

KopieParts Application::exportParts()
{
    return {
        {*m_engine, m_settings, m_files, m_locator, m_loop},
        m_settings,
        m_texts,
        m_warnings,
        m_exportForm,
        [this](int code, const QString& what) {
            M3uErrors errors(m_files, {m_paths.programFolder(), m_paths.GetConfigPath()}, m_clock);
            errors.add(code, u"SavePlaylist"_s, what);
        }};
}

SampleToolParts Application::sampleParts()
{
    return {m_files, m_paths.programFolder(), m_suite, m_siblings,
            [this](const QString& program) { m_mlvdb.siblings().tellUnless(false, program); }};
}

void Application::hearSampleTool()
{
    m_playlistMessage->setMessageNumber([this](qint32 id, qint32 wParam, qint32) {
        if (id == message::kSampleValue1 || id == message::kSampleValue2) {
            guarded([this] {
                const SampleEdit edit = m_sampleTool.read();
                m_playlist.takeSample(edit.PLID, edit.FID, edit.FrameStart, edit.FrameStop);
            });
        } else if (id == message::kBringWindowToTop && !m_playlist.isLocked() &&
                   wParam == m_window.controls().window.windowHandle32()) {
            m_window.bringToFront();
        }
        return 0;
    });
}

} // namespace melovane
