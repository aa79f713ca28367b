#include "help/help_pages.h"

#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/key_names.h"
#include "config/paths.h"
#include "help/help_places.h"
#include "help/help_text.h"
#include "help/menu_keys.h"
#include "platform/system/files.h"
#include "platform/system/io_error.h"
#include "platform/system/path_text.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Bytes of a page; a file beyond that is none of ours.
constexpr qint64 kMaxPage = qint64{256} * 1024;

const QString kKeys = u"keys:"_s;
const QString kFixedKeys = u"kbd:"_s;

/// The value of a binding that is for no key.
const QString kUnbound = u"n/a"_s;

QString rowOf(const QString& keys, const QString& command)
{
    return u"<tr><td>%1</td><td>%2</td></tr>\n"_s.arg(keys, command);
}

bool holdsAll(const QString& text, const QStringList& words)
{
    return std::ranges::all_of(
        words, [&](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
}

} // namespace

HelpPages::HelpPages(Parts parts)
    : m_parts(std::move(parts))
{}

QString HelpPages::folder() const
{
    return path::join(m_parts.folder, m_parts.texts.text(u"help.folder"));
}

bool HelpPages::areThere() const
{
    return !title(kHelpPages.front()).isEmpty();
}

QString HelpPages::html(QStringView page) const
{
    if (std::ranges::find(kHelpPages, page) == kHelpPages.end()) {
        return {};
    }
    try {
        const QString file = path::join(folder(), page.toString() + u".html"_s);
        return helptext::filled(QString::fromUtf8(m_parts.files.read(file, kMaxPage)),
                                [this](const QString& name) { return valueOf(name); });
    } catch (const IoError&) {
        return {};
    }
}

QString HelpPages::title(QStringView page) const
{
    return helptext::plain(helptext::inside(html(page), u"h1"));
}

QString HelpPages::valueOf(const QString& name) const
{
    if (name == "table:bound"_L1) {
        return boundTable();
    }
    if (name == "table:menu"_L1) {
        return menuTable();
    }
    if (name.startsWith(kFixedKeys)) {
        return caps(name.mid(kFixedKeys.size()));
    }
    if (name.startsWith(kKeys)) {
        for (const Tasten& binding : m_parts.bindings()) {
            if (binding.Id == QStringView(name).sliced(kKeys.size())) {
                return boundKeys(binding);
            }
        }
        return name;
    }
    const QString text = helptext::caption(m_parts.texts.text(name));
    return text.isEmpty() ? name : u"<b>"_s + text.toHtmlEscaped() + u"</b>"_s;
}

QString HelpPages::caps(const QString& portable) const
{
    return u"<code>"_s + m_parts.nativeKeys(portable).toHtmlEscaped() + u"</code>"_s;
}

QString HelpPages::boundKeys(const Tasten& binding) const
{
    if (binding.KeyName.isEmpty() || binding.KeyName == kUnbound) {
        return m_parts.texts.text(u"help.nokeys").toHtmlEscaped();
    }
    const QString portable = portableKeys(binding.KeyName);
    // A key that only has a number.
    return portable.isEmpty() ? u"<code>"_s + binding.KeyName.toHtmlEscaped() + u"</code>"_s
                              : caps(portable);
}

QString HelpPages::boundTable() const
{
    const std::vector<Tasten> bindings = m_parts.bindings();
    QStringList groups;
    for (const Tasten& binding : bindings) {
        groups.append(binding.Group);
    }
    groups.removeDuplicates();
    QString result;
    for (const QString& group : groups) {
        result += u"<h3>%1</h3>\n<table>\n"_s.arg(
            m_parts.texts.text(u"keys.group."_s + group).toHtmlEscaped());
        for (const Tasten& binding : bindings) {
            if (binding.Group == group) {
                const QString label = helptext::caption(m_parts.texts.text(binding.TextKey));
                result += rowOf(boundKeys(binding),
                                (label.isEmpty() ? binding.Id : label).toHtmlEscaped());
            }
        }
        result += u"</table>\n"_s;
    }
    return result;
}

QString HelpPages::menuTable() const
{
    QString result = u"<table>\n"_s;
    for (const MenuKey& key : menuKeys()) {
        result += rowOf(caps(key.keys.toString()),
                        helptext::caption(m_parts.texts.text(key.textKey)).toHtmlEscaped());
    }
    return result + u"</table>\n"_s;
}

std::vector<HelpHit> HelpPages::find(const QString& words) const
{
    const QStringList all = words.split(u' ', Qt::SkipEmptyParts);
    std::vector<HelpHit> result;
    if (all.isEmpty()) {
        return result;
    }
    for (const QStringView page : kHelpPages) {
        const QString text = helptext::plain(html(page));
        if (holdsAll(text, all)) {
            result.push_back({page.toString(), title(page), helptext::excerpt(text, all.first())});
        }
    }
    std::ranges::stable_sort(result, std::ranges::greater(), [&](const HelpHit& hit) {
        return std::ranges::count_if(all, [&](const QString& word) {
            return hit.title.contains(word, Qt::CaseInsensitive);
        });
    });
    return result;
}

QString HelpPages::hitsPage(const QString& words) const
{
    const std::vector<HelpHit> hits = find(words);
    QString result = u"<html><body><h1>%1</h1>\n"_s.arg(
        m_parts.texts.text(hits.empty() ? u"help.none" : u"help.hits", words).toHtmlEscaped());
    for (const HelpHit& hit : hits) {
        result += u"<p><a href=\"%1.html\">%2</a><br>%3</p>\n"_s.arg(
            hit.page, hit.title.toHtmlEscaped(), hit.excerpt.toHtmlEscaped());
    }
    return result + u"</body></html>"_s;
}

HelpPages::Parts
helpOf(const Files& files, Mod_API& paths, const ConfigObjects& texts, GlobalSettings& settings)
{
    return {.files = files,
            .folder = path::join(paths.programFolder(), u"help"_s),
            .texts = texts,
            .bindings = [&settings] {
                if (settings.TastenAll().empty()) {
                    settings.InitTasten();
                    settings.Refresh();
                }
                return settings.TastenAll();
            }};
}

} // namespace melovane
