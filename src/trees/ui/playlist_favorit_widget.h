#pragma once

#include "platform/qt/panel.h"

namespace melovane {

class ConfigObjects;
class IconSet;
class OutlineTree;
class PlaylistFavorit;
class TreeControl;

/// The form of the playlist panel: tool bar and tree.
class PlaylistFavoritWidget : public Panel
{
    Q_OBJECT

public:
    PlaylistFavoritWidget(const Skin& skin, const IconSet& icons, QWidget* parent = nullptr);

    /// What the logic of the panel is made with.
    [[nodiscard]] TreeControl& tree();

    /// Connects the form with its logic, which outlives the last event of the form.
    void attach(PlaylistFavorit& logic, const ConfigObjects& texts);

    /// Everything that stands still speaks the language of the texts as they are now.
    void translate(const PlaylistFavorit& logic, const ConfigObjects& texts);

    /// Where the last context menu was asked for, on the screen.
    [[nodiscard]] QPoint menuPlace() const { return m_menuPlace; }

private:
    void createToolBar(PlaylistFavorit& logic, const ConfigObjects& texts);
    void judgeTools(const PlaylistFavorit& logic, const ConfigObjects& texts);

    const IconSet& m_icons;
    OutlineTree* m_tree;
    QPoint m_menuPlace;
};

} // namespace melovane
