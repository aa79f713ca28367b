#pragma once

#include "config/tasten.h"

#include <QString>

#include <functional>
#include <vector>

namespace melovane {

class ConfigObjects;
class Files;
class GlobalSettings;
class Mod_API;

/// A page that holds what was looked for.
struct HelpHit
{
    QString page;
    QString title;
    QString excerpt; ///< some words around the first hit
};

/// The pages of the help, in the language of the texts as they are at each call.
///
/// Pages are HTML with places to fill: "{{mnuUndo}}" is the caption of that name,
/// "{{keys:DBKopie}}" what the user has bound to that command, "{{kbd:Ctrl+F}}" keys that are
/// always the same,
/// "{{table:bound}}" and "{{table:menu}}" all of either. So a page cannot name a menu or a key that
/// the program does not have.
class HelpPages
{
public:
    /// All outlive the pages.
    struct Parts
    {
        const Files& files;
        QString folder; ///< with a folder for each language
        const ConfigObjects& texts;
        std::function<std::vector<Tasten>()> bindings; ///< of the user, as they are now
        /// Keys in the words of the desktop: "Strg+C" for "Ctrl+C". Set by whoever shows the pages.
        std::function<QString(const QString& portable)> nativeKeys = {};
    };

    explicit HelpPages(Parts parts);

    /// False when no page of the language is installed.
    [[nodiscard]] bool areThere() const;

    /// Where pages and pictures of the language lie.
    [[nodiscard]] QString folder() const;

    /// Its heading; empty for a page that is not there.
    [[nodiscard]] QString title(QStringView page) const;

    /// The whole page, filled; empty for one that is not there.
    [[nodiscard]] QString html(QStringView page) const;

    /// Pages that hold all words, without regard to case; those with more of them in the
    /// title come first.
    [[nodiscard]] std::vector<HelpHit> find(const QString& words) const;

    /// The hits as a page of its own.
    [[nodiscard]] QString hitsPage(const QString& words) const;

    [[nodiscard]] const ConfigObjects& texts() const { return m_parts.texts; }

private:
    [[nodiscard]] QString valueOf(const QString& name) const;
    [[nodiscard]] QString caps(const QString& portable) const;
    [[nodiscard]] QString boundKeys(const Tasten& binding) const;
    [[nodiscard]] QString boundTable() const;
    [[nodiscard]] QString menuTable() const;

    Parts m_parts;
};

/// The help of an installed program. All outlive what is made of it.
[[nodiscard]] HelpPages::Parts
helpOf(const Files& files, Mod_API& paths, const ConfigObjects& texts, GlobalSettings& settings);

} // namespace melovane
