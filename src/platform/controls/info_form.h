#pragma once

#include <QString>
#include <QStringList>

namespace melovane {

/// What the information window shows.
struct InfoView
{
    QString caption;
    QString title;
    QString purpose;
    QStringList facts; ///< a line each; the user may copy them
    QString okCaption;
};

/// The information window, `frmInfo`.
class InfoForm
{
public:
    virtual ~InfoForm() = default;

    /// Returns when the window was closed.
    virtual void show(const InfoView& view) = 0;
};

} // namespace melovane
