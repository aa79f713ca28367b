#include "config/program_call.h"

#include "config/log4mlv.h"

#include <QDir>
#include <QFile>
#include <QLocale>
#include <QTextStream>

#include <algorithm>
#include <array>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Options of the tool kit that a value follows; it takes them with one dash and with two.
constexpr std::array kOptionsWithValue = {u"platform",      u"platformpluginpath",
                                          u"platformtheme", u"plugin",
                                          u"style",         u"stylesheet",
                                          u"session",       u"display",
                                          u"geometry",      u"qwindowgeometry",
                                          u"qwindowicon",   u"qwindowtitle",
                                          u"title",         u"icon",
                                          u"fontengine",    u"name"};

constexpr std::array kOptions = {u"reverse", u"widgetcount", u"nograb",
                                 u"dograb",  u"sync",        u"iconic"};

template <typename Names> bool isOneOf(const Names& names, QStringView name)
{
    return std::any_of(names.begin(), names.end(),
                       [name](const char16_t* known) { return name == QStringView(known); });
}

/// Without control letters, and no longer than a line that is read.
QString inOneLine(QString text)
{
    constexpr qsizetype kMax = 200;
    if (text.size() > kMax) {
        text = text.first(kMax / 2) + u"..."_s + text.last(kMax / 2 - 3);
    }
    for (QChar& letter : text) {
        letter = letter.category() == QChar::Other_Control ? QChar(u'?') : letter;
    }
    return text;
}

} // namespace

QString versionLine(QStringView program)
{
    return u"%1 (Melovane) %2.%3.%4"_s.arg(program)
        .arg(MLV_VERSION_MAJOR)
        .arg(MLV_VERSION_MINOR)
        .arg(MLV_VERSION_REVISION);
}

PageLanguage pageLanguageOfTerminal()
{
    return QLocale::system().language() == QLocale::German ? PageLanguage::German
                                                           : PageLanguage::English;
}

QStringList takeSuiteOptions(QStringList arguments)
{
    if (arguments.removeAll(u"--log"_s) > 0) {
        qputenv(kLogVariable, "1");
    }
    const QString option = u"--data-dir"_s;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const bool isJoined = arguments[i].startsWith(option + u'=');
        const QString folder = isJoined                 ? arguments[i].sliced(option.size() + 1)
                               : arguments[i] == option ? arguments.value(i + 1)
                                                        : QString();
        if (!folder.isEmpty()) {
            // Read by the places of every program of the suite: keep the name.
            qputenv("MELOVANE_DATA_DIR",
                    QFile::encodeName(QDir::cleanPath(QDir::current().absoluteFilePath(folder))));
            arguments.remove(i, isJoined ? 1 : 2);
            break;
        }
    }
    return arguments;
}

QStringList argumentsOf(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    return takeSuiteOptions(arguments);
}

std::optional<int> answerCall(QStringView program, const QStringList& arguments)
{
    if (arguments.size() != 1) {
        return {};
    }
    QTextStream out(stdout);
    if (arguments[0] == "--help"_L1 || arguments[0] == "-h"_L1) {
        out << programPage(program, pageLanguageOfTerminal()) << Qt::endl;
        return 0;
    }
    if (arguments[0] == "--version"_L1) {
        out << versionLine(program) << Qt::endl;
        return 0;
    }
    return {};
}

int refuseCall(QStringView program, const QString& what)
{
    const bool german = pageLanguageOfTerminal() == PageLanguage::German;
    QString text = german ? u"%1: der Aufruf ist unvollständig; \"%1 --help\" erklärt ihn"_s
                          : u"%1: the call is not complete; \"%1 --help\" explains it"_s;
    if (!what.isEmpty()) {
        text = german ? u"%1: \"%2\" ergibt keinen Sinn; \"%1 --help\" erklärt den Aufruf"_s
                      : u"%1: \"%2\" makes no sense; \"%1 --help\" explains the call"_s;
        text = text.arg(program, inOneLine(what));
    } else {
        text = text.arg(program);
    }
    QTextStream(stderr) << text << Qt::endl;
    return kWrongCall;
}

std::optional<QString> firstForeign(const QStringList& arguments)
{
    const QStringList foreign = foreignArguments(arguments);
    return foreign.isEmpty() ? std::nullopt : std::optional(foreign.first());
}

QStringList foreignArguments(const QStringList& arguments)
{
    QStringList foreign;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& argument = arguments[i];
        const qsizetype dashes = argument.startsWith("--"_L1) ? 2 : 1;
        const QStringView name = QStringView(argument).sliced(std::min(dashes, argument.size()));
        const QStringView option =
            name.left(name.indexOf(u'=') < 0 ? name.size() : name.indexOf(u'='));
        if (!argument.startsWith(u'-') ||
            (!isOneOf(kOptions, name) && !isOneOf(kOptionsWithValue, option))) {
            foreign.append(argument);
            continue;
        }
        i += isOneOf(kOptionsWithValue, name) ? 1 : 0; // its value
    }
    return foreign;
}

} // namespace melovane
