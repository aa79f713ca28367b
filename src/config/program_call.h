#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace melovane {

/// Languages of the texts that a program has before it knows any setting.
enum class PageLanguage
{
    German,
    English
};

/// German where the terminal speaks German, English everywhere else.
[[nodiscard]] PageLanguage pageLanguageOfTerminal();

/// "MelovaneDB (Melovane) 3.4.150": a program and its release.
[[nodiscard]] QString versionLine(QStringView program);

/// What a program does, how it is called and what it ends with: the one text of `--help` and of its
/// manual page. No line is longer than 80 characters.
///
/// \param program as its file is called; one without a page gives an empty text
[[nodiscard]] QString programPage(QStringView program, PageLanguage language);

/// Ends a program whose call makes no sense: keep, scripts ask for it.
inline constexpr int kWrongCall = 2;

/// Takes the options of every program out of the arguments; they hold for this program and those
/// that it starts. Before anything is read.
///
/// `--data-dir FOLDER` keeps everything of the user below that folder, instead of in the desktop's
/// folders; without a folder behind it the option stays, and makes no sense. `--log` switches the
/// debug log on, see Log4Mlv.
[[nodiscard]] QStringList takeSuiteOptions(QStringList arguments);

/// The arguments of a process without its program's name and the options of every program, see
/// takeSuiteOptions.
[[nodiscard]] QStringList argumentsOf(int argc, char** argv);

/// Prints the page for `--help` and `-h`, name and release for `--version`, when that is the whole
/// call. Needs no display, reads no setting and makes no file, so it is asked before anything else.
/// \return what the program ends with; nothing when it was called to work
[[nodiscard]] std::optional<int> answerCall(QStringView program, const QStringList& arguments);

/// Tells a wrong call in one line on the standard error output.
/// \param what the argument that makes no sense; empty when something is missing
/// \return kWrongCall
[[nodiscard]] int refuseCall(QStringView program, const QString& what);

/// The first argument that neither the tool kit takes for itself ("-platform offscreen") nor the
/// program has a use for; nothing when there is none. For programs without arguments of their own.
[[nodiscard]] std::optional<QString> firstForeign(const QStringList& arguments);

/// All of these, in their order.
[[nodiscard]] QStringList foreignArguments(const QStringList& arguments);

} // namespace melovane
