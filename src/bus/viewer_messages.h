#pragma once

#include <QStringView>
#include <QtGlobal>

/// What the console and the cover viewer say to each other, beside the image that was chosen: keep.
namespace melovane::message {

/// To the viewer, a text: the FID of the track whose row has become the current one. Empty when
/// there is none.
inline constexpr qint32 kRowOfConsole = 2002;
/// To the console, a text without letters: send kRowOfConsole. The number is the viewer's control.
inline constexpr qint32 kViewerWantsRow = 2003;
/// To the viewer that runs, a text: show this image; it comes to the front.
inline constexpr qint32 kShowImage = 2004;

/// Keys of section "Message.Handle".
inline constexpr QStringView kViewerKey = u"SleeveViewer.exe";
/// The console's control that the viewer asks for the row.
inline constexpr QStringView kRowOfConsoleKey = u"MelovaneDB.Row";

} // namespace melovane::message
