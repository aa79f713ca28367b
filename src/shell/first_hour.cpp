#include "shell/first_hour.h"

#include "config/config_objects.h"
#include "config/global_settings.h"
#include "shell/window_data.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Which hint is the next, from 1 on; one beyond the last when all were read. Keep.
const QString kSection = u"FirstHour"_s;
const QString kHint = u"Hint"_s;

} // namespace

FirstHour::FirstHour(Parts parts)
    : m_parts(std::move(parts))
{}

int FirstHour::present() const
{
    return int(m_parts.settings.GetKeyValueLong(kSection, kHint, 0));
}

void FirstHour::keep(int hint)
{
    m_parts.settings.WriteKeyValue(kSection, kHint, QString::number(hint));
}

void FirstHour::begin()
{
    m_isEmpty = m_parts.data.trackCount() == 0;
    if (!m_isEmpty) {
        showHint();
    }
}

void FirstHour::libraryChanged()
{
    if (!m_isEmpty || m_parts.data.trackCount() == 0) {
        return;
    }
    m_isEmpty = false;
    m_parts.showAllTracks();
    if (present() == 0) {
        keep(1);
    }
    showHint();
}

void FirstHour::putAway()
{
    keep(present() + 1);
    showHint();
}

void FirstHour::showHint()
{
    const int hint = present();
    const bool isThere = !m_isEmpty && hint >= 1 && hint <= kHints;
    m_parts.showHint(isThere ? m_parts.texts.text(u"firsthour.hint.%1"_s.arg(hint)) : QString());
}

} // namespace melovane
