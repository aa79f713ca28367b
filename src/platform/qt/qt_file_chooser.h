#pragma once

#include "platform/controls/file_chooser.h"

class QWidget;

namespace melovane {

/// File dialogs over a window.
class QtFileChooser : public FileChooser
{
public:
    explicit QtFileChooser(QWidget* window)
        : m_window(window)
    {}

    [[nodiscard]] QStringList openFiles(const FileQuestion& question) override;
    [[nodiscard]] QString saveFile(const FileQuestion& question) override;

private:
    QWidget* m_window;
};

} // namespace melovane
