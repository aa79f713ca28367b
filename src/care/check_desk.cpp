#include "care/check_desk.h"

#include "care/check_report.h"
#include "config/config_objects.h"
#include "platform/controls/progress_window.h"
#include "platform/controls/warnings.h"
#include "platform/system/live_wait.h"
#include "platform/system/worker.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Lines that a message tells one by one; the log has all of them.
constexpr qsizetype kMaxTold = 10;

bool anyCanBeMended(const std::vector<Finding>& findings)
{
    const auto is = [&findings](Flaw flaw) {
        return std::any_of(findings.begin(), findings.end(),
                           [flaw](const Finding& finding) { return finding.flaw == flaw; });
    };
    return !is(Flaw::Unreadable) && !is(Flaw::PageDamaged) &&
           std::any_of(findings.begin(), findings.end(),
                       [](const Finding& finding) { return canBeMended(finding.flaw); });
}

bool needsBackup(const std::vector<Finding>& findings)
{
    return std::any_of(findings.begin(), findings.end(), [](const Finding& finding) {
        return finding.flaw == Flaw::Unreadable || finding.flaw == Flaw::PageDamaged ||
               finding.flaw == Flaw::TableLost;
    });
}

} // namespace

/// A check on another thread; it owns all that it uses.
struct CheckDesk::Running
{
    std::shared_ptr<LibraryCheck> check;
    std::atomic<qint64> done{0};
    std::atomic<qint64> whole{0};
    std::atomic<bool> goesOn{true};
    Findings findings;

    void run()
    {
        findings = check->run(DatabaseCare::Depth::Indexes, [this](qint64 a, qint64 b) {
            done = a;
            whole = b;
            return goesOn.load();
        });
    }
};

CheckDesk::CheckDesk(CheckDeskParts parts)
    : m_parts(std::move(parts))
{}

CheckDesk::~CheckDesk()
{
    if (m_behind) {
        m_behind->goesOn = false;
    }
}

CheckDesk::Findings CheckDesk::run(const std::shared_ptr<LibraryCheck>& check)
{
    const auto running = std::make_shared<Running>();
    running->check = check;
    const bool finished = runWatched(
        m_parts.tools, m_parts.tools.texts.text(u"check.title"), [running] { running->run(); },
        [&](ProgressWindow& window) {
            if (!window.show(m_parts.tools.texts.text(u"check.running"), running->done,
                             running->whole)) {
                running->goesOn = false;
            }
            return running->goesOn.load();
        });
    if (!finished || !running->findings) {
        return std::nullopt;
    }
    m_parts.checked(qint64(running->findings->size()));
    return running->findings;
}

void CheckDesk::check()
{
    const ConfigObjects& texts = m_parts.tools.texts;
    const Findings findings = run(m_parts.makeCheck());
    if (!findings) {
        m_parts.tools.tell(texts.text(u"backup.givenup"));
        return;
    }
    if (findings->empty()) {
        m_parts.tools.warnings.ShowWarning(texts.text(u"check.whole"), WarningType::Note,
                                           texts.text(u"check.title"), u"check.whole"_s);
        return;
    }
    log(*findings);
    if (!anyCanBeMended(*findings)) {
        tellFound(*findings, texts.text(u"check.found", qint64(findings->size())));
        return;
    }
    const QString text = texts.text(u"check.found", qint64(findings->size())) + u"\n\n"_s +
                         toldText(*findings) + u"\n\n"_s + texts.text(u"check.mend");
    if (m_parts.tools.warnings.ShowWarning(text, WarningType::Question, texts.text(u"check.title"),
                                           u"check.mend"_s) == WarningAnswer::Yes) {
        repair(*findings);
    }
}

void CheckDesk::repair(const std::vector<Finding>& findings)
{
    const ConfigObjects& texts = m_parts.tools.texts;
    const std::shared_ptr<LibraryCheck> check = m_parts.makeCheck();
    m_parts.tools.takeLibrary();
    bool treesAreNew = false;
    const int error =
        quietly(m_parts.tools.log, u"Check"_s, [&] { treesAreNew = check->repair(findings); });
    const Findings left = run(check);
    m_parts.tools.giveLibrary();
    if (treesAreNew) {
        m_parts.rebuildTrees();
    }
    const auto count = left ? qint64(left->size()) : qint64(findings.size());
    if (error == 0 && count == 0) {
        m_parts.tools.tell(texts.text(u"check.mended", qint64(findings.size())));
    } else {
        tellFound(left.value_or(findings), texts.text(u"check.left", count));
    }
}

void CheckDesk::tellFound(const std::vector<Finding>& findings, const QString& heading)
{
    QString text = heading + u"\n\n"_s + toldText(findings);
    if (needsBackup(findings)) {
        text += u"\n\n"_s + m_parts.tools.texts.text(u"check.restore");
    }
    m_parts.tools.warnings.ShowWarning(text, WarningType::Note,
                                       m_parts.tools.texts.text(u"check.title"), u"check.found"_s);
}

QString CheckDesk::toldText(const std::vector<Finding>& findings) const
{
    const QStringList lines = reportLines(m_parts.tools.texts, findings);
    QStringList told = lines.first(std::min(lines.size(), kMaxTold));
    if (lines.size() > kMaxTold) {
        told.append(m_parts.tools.texts.text(u"check.more", lines.size() - kMaxTold));
    }
    return told.join(u'\n');
}

void CheckDesk::log(const std::vector<Finding>& findings) const
{
    if (m_parts.tools.log) {
        m_parts.tools.log(u"Check"_s, reportLines(m_parts.tools.texts, findings).join(u"; "_s));
    }
}

void CheckDesk::checkBehind()
{
    if (m_behind) {
        return;
    }
    m_behind = std::make_shared<Running>();
    m_behind->check = m_parts.makeCheck();
    m_parts.tools.worker.run([running = m_behind] { running->run(); },
                             [this, running = m_behind] {
                                 m_behind.reset();
                                 behindDone(running->findings);
                             });
}

void CheckDesk::behindDone(const Findings& findings)
{
    if (!findings) {
        return;
    }
    m_parts.checked(qint64(findings->size()));
    if (findings->empty()) {
        m_parts.tools.tell(m_parts.tools.texts.text(u"check.started"));
        return;
    }
    log(*findings);
    tellFound(*findings, m_parts.tools.texts.text(u"check.found", qint64(findings->size())));
}

} // namespace melovane
