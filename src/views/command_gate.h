#pragma once

#include <QString>

#include <functional>

namespace melovane {

class ConfigObjects;
class GlobalSettings;

/// What a view can say of itself when one of its commands is judged.
struct CommandPlace
{
    bool isLent = false;   ///< another program has the library
    bool hasRow = true;    ///< there is a current row
    bool hasList = true;   ///< a playlist is open
    bool isLocked = false; ///< and must not be changed
    bool canUndo = true;
    bool canRedo = true;
    bool knowsPlay = true; ///< which entry plays, and which comes next
};

/// What commands find around the views; asked at each judgement, so that a program that is
/// installed meanwhile counts.
struct CommandWorld
{
    /// Whether a program lies in the program folder.
    std::function<bool(const QString& program)> isInstalled = [](const QString&) { return true; };
    /// Whether it runs, wherever it was started from, and can be told what to do.
    std::function<bool(const QString& program)> isRunning = [](const QString&) { return false; };
    std::function<bool()> isPlayerThere = [] { return true; };
    /// Whether nothing can be written into the library.
    std::function<bool()> isReadOnly = [] { return false; };
};

/// The one judge of whether a command of the console can work now; menus, buttons and keys ask it.
///
/// A command is known by the name of its menu entry, the tag of its row menu entry or the key of
/// its button; one of the tree of lists by "lists." in front of that.
class CommandGate
{
public:
    /// All outlive the gate.
    CommandGate(const ConfigObjects& texts, CommandWorld world);

    /// Why a command cannot work now, in the user's words. Empty when it can, and for a command
    /// that needs nothing.
    [[nodiscard]] QString whyNot(QStringView command, const CommandPlace& place = {}) const;

private:
    [[nodiscard]] bool isThere(QStringView program) const;
    [[nodiscard]] QString missing(QStringView program) const;

    const ConfigObjects& m_texts;
    CommandWorld m_world;
};

/// The key of a command as tool kits read it, "Ctrl+C": the user's binding, or a fixed one. Empty
/// for a command without a key.
[[nodiscard]] QString commandKey(GlobalSettings& settings, QStringView command);

} // namespace melovane
