#pragma once

#include "platform/message/message_control.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace melovane {

class ToolBox;

/// A key of the settings file that holds the handle of a message control, alive or not.
struct PublishedControl
{
    QString section;
    QString key;
    MessageHandle handle = 0;
};

/// All keys of the suite that hold handles: sections "Message" and "Message.Handle", and the two
/// keys of section "Global".
[[nodiscard]] std::vector<PublishedControl> publishedControls(const ToolBox& settings);

/// The handles that a word may mean, in the order in which they are tried: the number itself, or
/// those of all keys of that name. "Handle." in front and ".exe" behind may be left out, case has
/// no meaning.
[[nodiscard]] std::vector<MessageHandle> handlesFor(const QString& word,
                                                    const std::vector<PublishedControl>& published);

/// The keys that hold a handle.
[[nodiscard]] QStringList keysOf(MessageHandle handle,
                                 const std::vector<PublishedControl>& published);

/// Writes a handle under the key that a name stands for: `Handle.DJ`, `Handle.DB` or `Handle.Kiv`
/// in section "Message", else name and ".exe" in "Message.Handle". False when the file cannot be
/// written.
[[nodiscard]] bool publishControl(ToolBox& settings, const QString& name, MessageHandle handle);

} // namespace melovane
