#include "settings/key_bindings.h"

#include "config/config_objects.h"
#include "config/tasten.h"
#include "settings/setting_draft.h"

#include <algorithm>
#include <array>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kSection = u"Tastatur"_s;

/// Stands for no keys where the delivery has some: an empty entry would give those again. Keep,
/// the suite has a binding of this value.
const QString kUnbound = u"n/a"_s;

/// The order in which the console asks its bindings: the first that fits acts.
constexpr std::array<QStringView, 11> kOrder = {u"PLPLMonitorPlay",
                                                u"PLPLMonitorStop",
                                                u"PLPLMonitorPlayCenter",
                                                u"DBSelall",
                                                u"DBKopie",
                                                u"DBInsert",
                                                u"DBAppend",
                                                u"DBDetail",
                                                u"DBALLNEXTPLAY",
                                                u"DBALLSOFORTPLAY",
                                                u"PLTOP"};

size_t placeOf(const QString& id)
{
    return size_t(std::find(kOrder.begin(), kOrder.end(), id) - kOrder.begin());
}

/// The program whose keys these are; empty for all of them.
QStringView programOf(const QString& group)
{
    if (group == "Melovane"_L1) {
        return {};
    }
    if (group == "Datenbank"_L1 || group == "Monitor in Tabellen"_L1) {
        return u"console";
    }
    return group == "MP3 Importer"_L1 ? u"importer" : u"player";
}

/// Two commands that are asked for in the same window.
bool meet(const KeyRow& one, const KeyRow& other)
{
    const QStringView first = programOf(one.group);
    const QStringView second = programOf(other.group);
    return first.isEmpty() || second.isEmpty() || first == second;
}

void findConflicts(std::vector<KeyRow>& rows)
{
    for (KeyRow& row : rows) {
        for (const KeyRow& other : rows) {
            if (!row.keys.isEmpty() && &row != &other && row.keys == other.keys &&
                meet(row, other)) {
                row.otherId = other.id;
                const size_t own = placeOf(row.id);
                const size_t theirs = placeOf(other.id);
                row.acts = row.acts && (own < theirs || (own == theirs && &row < &other));
            }
        }
    }
}

} // namespace

KeyBindings::KeyBindings(SettingDraft& draft, const ConfigObjects& texts)
    : m_draft(draft)
    , m_texts(texts)
{}

std::vector<KeyRow> KeyBindings::rows() const
{
    const auto shown = [](const QString& keys) { return keys == kUnbound ? QString() : keys; };
    std::vector<KeyRow> result;
    for (const Tasten& binding : defaultTasten()) {
        const QString stored = m_draft.text(kSection, binding.TextKey);
        const QString keys = stored.isEmpty() ? binding.KeyName : stored;
        const QString label = m_texts.text(binding.TextKey);
        result.push_back({.id = binding.Id,
                          .group = binding.Group,
                          .label = label.isEmpty() ? binding.Id : label,
                          .keys = shown(keys),
                          .changed = shown(keys) != shown(binding.KeyName)});
    }
    findConflicts(result);
    return result;
}

void KeyBindings::bind(const QString& id, const QString& keys)
{
    for (const Tasten& binding : defaultTasten()) {
        if (binding.Id == id) {
            // The keys of delivery are written, too: a program that runs keeps what it has read
            // for an entry that is gone.
            m_draft.set(kSection, binding.TextKey, keys.isEmpty() ? kUnbound : keys);
        }
    }
}

void KeyBindings::reset(const QString& id)
{
    for (const Tasten& binding : defaultTasten()) {
        if (binding.Id == id && !m_draft.text(kSection, binding.TextKey).isEmpty()) {
            bind(id, binding.KeyName);
        }
    }
}

void KeyBindings::resetAll()
{
    for (const Tasten& binding : defaultTasten()) {
        reset(binding.Id);
    }
}

} // namespace melovane
