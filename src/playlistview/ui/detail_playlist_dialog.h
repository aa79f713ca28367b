#pragma once

#include "playlistview/detail_playlist.h"

namespace melovane {

class ConfigObjects;

/// The dialog `frmDetailPlaylist`.
class DetailPlaylistDialog : public DetailForm
{
public:
    explicit DetailPlaylistDialog(const ConfigObjects& texts);

    [[nodiscard]] QString ask(const PlaylistDetails& details) override;

private:
    const ConfigObjects& m_texts;
};

} // namespace melovane
