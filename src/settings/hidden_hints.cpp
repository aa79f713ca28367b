#include "settings/hidden_hints.h"

#include "config/config_objects.h"
#include "platform/system/leading_number.h"
#include "settings/setting_draft.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Keep, every program of the suite remembers its hidden messages there.
const QString kSection = u"WarnMeldung"_s;

} // namespace

HiddenHints::HiddenHints(SettingDraft& draft, const ConfigObjects& texts)
    : m_draft(draft)
    , m_texts(texts)
{}

std::vector<HiddenHint> HiddenHints::rows() const
{
    std::vector<HiddenHint> result;
    for (const QString& line : m_draft.section(kSection)) {
        const QString key = line.section(u'=', 0, 0);
        if (leadingLong(m_draft.text(kSection, key)) <= 0) {
            continue;
        }
        const QString name = key.section(u'.', 1);
        const QString words = m_texts.text(name).simplified();
        result.push_back({key, key.section(u'.', 0, 0), words.isEmpty() ? name : words});
    }
    return result;
}

void HiddenHints::show(const QString& key)
{
    m_draft.set(kSection, key, std::nullopt);
}

void HiddenHints::showAll()
{
    for (const HiddenHint& hint : rows()) {
        show(hint.key);
    }
}

} // namespace melovane
