#pragma once

#include "settings/hidden_hints.h"
#include "settings/key_bindings.h"
#include "settings/setting_draft.h"
#include "settings/setting_search.h"
#include "settings/setting_values.h"

#include <QColor>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

class QWidget;

namespace melovane {

class IconSet;
class Skin;

/// What the pages of the settings window work on; all of it outlives them.
struct SettingsDesk
{
    SettingDraft& draft;
    SettingValues& values;
    KeyBindings& keys;
    HiddenHints& hints;
    const SettingSearch& search;
    const ConfigObjects& texts;
    const Skin& skin;
    const IconSet& icons;

    /// Names of the sound cards of the machine.
    std::function<QStringList()> cards;
    /// False when the card cannot be opened.
    std::function<bool(const QString& card, int volume)> testTone;
    /// File names with their titles.
    std::function<std::vector<SettingValues::Choice>()> themes;
    std::function<std::vector<SettingValues::Choice>()> languages;
    /// What a name format makes of this moment.
    std::function<QString(const QString& format)> nameExample;

    // Dialogs over a window; empty, or no valid colour, when the user did not choose.
    std::function<QString(QWidget* owner, const QString& title, const QString& present)>
        chooseFolder;
    std::function<QString(QWidget* owner, const QString& title, const QString& present)>
        chooseLibrary;
    std::function<QColor(QWidget* owner, const QString& title, const QColor& present)> chooseColour;
};

} // namespace melovane
