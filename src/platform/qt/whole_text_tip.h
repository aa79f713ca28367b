#pragma once

class QHelpEvent;
class QString;
class QWidget;

namespace melovane {

/// Answers a question for a tool tip with a text that had no room for all of it, or hides the tip
/// when it had. Markup in the text is shown as it stands.
void showWholeText(const QHelpEvent& event, QWidget* view, const QString& text, bool fits);

} // namespace melovane
