#include "playlistfiles/kiv_interface.h"

#include "platform/system/files.h"
#include "platform/system/leading_number.h"
#include "platform/system/path_text.h"
#include "platform/system/text_file.h"
#include "platform/system/trim_blanks.h"
#include "store/error_sink.h"

#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A state file is a few hundred bytes; a larger one is none of ours.
constexpr qint64 kLargest = 64LL * 1024;

constexpr QStringView kName = u"global.kiv";

QString oneLine(QString text)
{
    for (QChar& sign : text) {
        if (sign == u'\n' || sign == u'\r' || sign == u'\0') {
            sign = u' ';
        }
    }
    return text + u'\n';
}

/// A number with a blank where its sign would be, and a blank behind.
QString printed(qint32 number)
{
    return (number < 0 ? QString() : u" "_s) + QString::number(number) + u" \n"_s;
}

/// Reads fields one after another, each by its own rule; behind the end there are none.
class FieldReader
{
public:
    explicit FieldReader(QString text)
        : m_text(std::move(text))
    {}

    /// The rest of the line as it stands.
    void readLine(QString& field)
    {
        if (m_at < m_text.size()) {
            field = upTo(u"\n");
        }
    }

    /// Up to a comma or the end of the line, blanks around cut; quotes hold commas together.
    void readText(QString& field)
    {
        if (!skipBlanks()) {
            return;
        }
        if (m_text[m_at] != u'"') {
            field = trimBlanks(upTo(u",\n"));
            return;
        }
        ++m_at;
        field = upTo(u"\"\n");
        upTo(u",\n");
    }

    /// Up to a blank, a comma or the end of the line.
    void readNumber(qint32& field)
    {
        if (!skipBlanks()) {
            return;
        }
        field = leadingLong(upTo(u" ,\n"));
        if (m_text[m_at - 1] == u' ' && skipBlanks() &&
            (m_text[m_at] == u',' || m_text[m_at] == u'\n')) {
            ++m_at;
        }
    }

private:
    /// False at the end of the text.
    bool skipBlanks()
    {
        while (m_at < m_text.size() && m_text[m_at] == u' ') {
            ++m_at;
        }
        return m_at < m_text.size();
    }

    /// The text before the next of these signs, which is passed, too.
    QString upTo(QStringView signs)
    {
        const qsizetype start = m_at;
        while (m_at < m_text.size() && !signs.contains(m_text[m_at])) {
            ++m_at;
        }
        const QString field = m_text.sliced(start, m_at - start);
        m_at = qMin(m_at + 1, m_text.size());
        return field;
    }

    QString m_text;
    qsizetype m_at = 0;
};

} // namespace

KivInterface::KivInterface(Files& files, QString dataFolder, QString programFolder)
    : m_files(files)
    , m_dataFolder(std::move(dataFolder))
    , m_programFolder(std::move(programFolder))
{}

void KivInterface::setEntry(const MlvPlaylistDetail& entry)
{
    FID = entry.FID;
    DName = entry.DName;
    file = entry.file;
    PLID = entry.PLID;
    reserved = 0;
    FrameStart = entry.FrameStart;
    FrameStop = entry.FrameStop;
    Interpret = entry.Interpret;
    Titel = entry.Titel;
    Path = entry.Path;
    tempo = leadingLong(entry.BPM);
}

QString KivInterface::place() const
{
    const QString name = trimBlanks(fileName);
    return name.isEmpty() ? path::join(m_dataFolder, kName) : name;
}

QString KivInterface::placeToRead() const
{
    const QString wanted = place();
    const bool isOwn = !trimBlanks(fileName).isEmpty() || m_files.fileExists(wanted);
    const QString old = path::join(m_programFolder, kName);
    return isOwn || !m_files.fileExists(old) ? wanted : old;
}

void KivInterface::KivSave()
{
    const QString text = oneLine(FID) + oneLine(DName) + oneLine(file) + printed(replyTo) +
                         printed(qint32(PLID)) + printed(reserved) + printed(FrameStart) +
                         printed(FrameStop) + oneLine(Interpret) + oneLine(Titel) + oneLine(Path) +
                         printed(tempo);
    quietly({}, u"KivSave"_s, [&] { m_files.writeWhole(place(), text.toUtf8()); });
}

void KivInterface::KivLoad()
{
    QByteArray bytes;
    quietly({}, u"KivLoad"_s, [&] { bytes = m_files.read(placeToRead(), kLargest); });
    // The tool may end lines in another system's way.
    QString text = textfile::decode(bytes);
    text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    FieldReader fields(text);
    qint32 entry = qint32(PLID);
    fields.readText(FID);
    fields.readLine(DName);
    fields.readLine(file);
    fields.readNumber(replyTo);
    fields.readNumber(entry);
    fields.readNumber(reserved);
    fields.readNumber(FrameStart);
    fields.readNumber(FrameStop);
    fields.readLine(Interpret);
    fields.readLine(Titel);
    fields.readLine(Path);
    fields.readNumber(tempo);
    PLID = Plid(entry);
}

void KivInterface::KivKill()
{
    m_files.remove(place());
}

} // namespace melovane
