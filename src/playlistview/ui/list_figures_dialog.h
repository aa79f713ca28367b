#pragma once

#include "playlistview/list_figures.h"

namespace melovane {

class ConfigObjects;

/// The dialog `frmDetailPlaylist`.
class ListFiguresDialog : public DetailForm
{
public:
    explicit ListFiguresDialog(const ConfigObjects& texts);

    [[nodiscard]] QString ask(const PlaylistDetails& details) override;

private:
    const ConfigObjects& m_texts;
};

} // namespace melovane
