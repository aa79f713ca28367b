#include "playlistfiles/kopie_file.h"

#include "config/config_objects.h"
#include "config/counted_text.h"
#include "config/global_settings.h"
#include "config/refusals.h"
#include "intake/import_errors.h"
#include "platform/controls/warnings.h"
#include "platform/db/db_error.h"
#include "platform/system/files.h"
#include "platform/system/path_text.h"
#include "platform/system/trim_blanks.h"
#include "playlistfiles/store_playlists.h"

#include <QLocale>
#include <QScopedValueRollback>

#include <array>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

// Keys of the settings: keep, the siblings know them.
const QString kGlobal = section::kGlobal.toString();
const QString kSavePlaylist = section::kSavePlaylist.toString();
const QString kFolderKey = u"SavePlaylistFilesPath"_s;
const QString kTemplateKey = u"Template"_s;
const QString kFileKey = u"opExpFile"_s;
const QString kFolderOptionKey = u"opExpDir"_s;

/// Templates of the options, by their numbers.
constexpr std::array<QStringView, 3> kFileParts = {u"%O", u"%N - %I", u"%I - %N"};
constexpr std::array<QStringView, 4> kFolderParts = {u"%G/", u"%A/", u"%G/%A/", u""};

/// Failures that the message names; all of them stand in the log.
constexpr size_t kNamedFailures = 8;

QString composed(int folders, int file)
{
    return kFolderParts.at(size_t(folders)).toString() + kFileParts.at(size_t(file)).toString();
}

/// Bytes as the user's language writes them: "1,5 GB".
QString sizeText(const ConfigObjects& texts, qint64 bytes)
{
    return QLocale(texts.text(u"Sprach.Code"))
        .formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

TemplateValues sampleOf(const ConfigObjects& texts)
{
    return {texts.text(u"export.sample.group"),  texts.text(u"export.sample.album"),
            texts.text(u"export.sample.artist"), texts.text(u"export.sample.title"),
            texts.text(u"export.sample.genre"),  texts.text(u"export.sample.list"),
            texts.text(u"export.sample.file"),   u"1"_s};
}

} // namespace

frmKopieFile::frmKopieFile(KopieParts parts)
    : m_parts(std::move(parts))
    , m_export(m_parts.exports, [this](const QString& name, qint64 position, qint64 count) {
        log(u"Copy: ( %1 / %2 ) --> "_s.arg(position).arg(count) + name);
        m_parts.form.setProgress(position, count);
        tellProgress(name, position, count);
    })
{}

void frmKopieFile::tellProgress(const QString& name, qint64 position, qint64 count)
{
    if (m_parts.progressSave) {
        m_parts.progressSave(name, position, count);
    }
}

void frmKopieFile::Show()
{
    if (m_open) {
        return;
    }
    const QScopedValueRollback open(m_open, true);
    const ExportSubject subject = readSubject(m_parts.exports, m_list);
    m_log = {};
    m_closeAfterwards = false;
    m_folder = m_parts.settings.GetKeyValue(kGlobal, kFolderKey, {});
    m_fileOption = m_parts.settings.GetKeyValueLong(kGlobal, kFileKey, 0);
    m_folderOption = m_parts.settings.GetKeyValueLong(kGlobal, kFolderOptionKey, 0);
    KopieForm& form = m_parts.form;
    form.open(*this);
    form.setSubject(
        m_parts.texts.text(subject.entries == 1 ? u"export.subject.one"_s : u"export.subject"_s,
                           subject.name, subject.entries));
    form.setTemplates(Template2Path::offered());
    form.setFolder(m_folder);
    noteFolder();
    setTemplate(m_parts.settings.GetKeyValue(kSavePlaylist, kTemplateKey, u"%O"_s));
    form.run();
}

// ---- folder and template

void frmKopieFile::folderTyped(const QString& folder)
{
    m_folder = trimBlanks(folder);
    noteFolder();
}

void frmKopieFile::noteFolder()
{
    const ConfigObjects& texts = m_parts.texts;
    if (m_folder.isEmpty()) {
        m_parts.form.setFolderNote(texts.text(u"export.folder.none"), true);
    } else if (!m_parts.exports.files.folderExists(m_folder)) {
        m_parts.form.setFolderNote(texts.text(u"export.folder.missing"), false);
    } else {
        const auto space = m_parts.exports.files.space(m_folder);
        m_parts.form.setFolderNote(
            space ? texts.text(u"export.folder.space", sizeText(texts, space->free)) : QString(),
            true);
    }
}

void frmKopieFile::cmdDir()
{
    if (const auto chosen = m_parts.form.chooseFolder(m_folder)) {
        m_parts.form.setFolder(*chosen);
        folderTyped(*chosen);
    }
}

void frmKopieFile::templateTyped(const QString& text)
{
    setTemplate(Template2Path::typeable(text));
}

void frmKopieFile::templateChosen(int index)
{
    setTemplate(Template2Path::offered().value(index, m_template));
}

void frmKopieFile::setTemplate(const QString& text)
{
    m_template = text;
    m_parts.form.setTemplate(text);
    m_parts.form.setPreview(Template2Path(text).preview(sampleOf(m_parts.texts)));
    showOptions();
}

void frmKopieFile::showOptions()
{
    for (int folders = 0; folders < int(kFolderParts.size()); ++folders) {
        for (int file = 0; file < int(kFileParts.size()); ++file) {
            if (composed(folders, file).compare(m_template, Qt::CaseInsensitive) == 0) {
                m_fileOption = file;
                m_folderOption = folders;
                m_parts.form.setOptions(file, folders);
                return;
            }
        }
    }
    m_parts.form.setOptions({}, {});
}

void frmKopieFile::fileOptionChosen(int option)
{
    m_fileOption = option;
    composeTemplate();
}

void frmKopieFile::folderOptionChosen(int option)
{
    m_folderOption = option;
    composeTemplate();
}

void frmKopieFile::composeTemplate()
{
    m_fileOption = qBound(0, m_fileOption, int(kFileParts.size()) - 1);
    m_folderOption = qBound(0, m_folderOption, int(kFolderParts.size()) - 1);
    GlobalSettings& settings = m_parts.settings;
    settings.WriteKeyValue(kGlobal, kFileKey, QString::number(m_fileOption));
    settings.WriteKeyValue(kGlobal, kFolderOptionKey, QString::number(m_folderOption));
    setTemplate(composed(m_folderOption, m_fileOption));
    // The options stand for the template, so both are remembered together.
    settings.WriteKeyValue(kSavePlaylist, kTemplateKey, m_template);
}

// ---- export

void frmKopieFile::cmdStart()
{
    if (m_running) {
        return;
    }
    if (m_folder.isEmpty() || !m_parts.exports.files.folderExists(m_folder)) {
        cmdDir();
        return;
    }
    storeSettings();
    runExport();
    if (m_closeAfterwards) {
        m_parts.form.close();
    }
}

void frmKopieFile::storeSettings()
{
    m_parts.settings.WriteKeyValue(kGlobal, kFolderKey, m_folder);
    m_parts.settings.WriteKeyValue(kSavePlaylist, kTemplateKey, m_template);
}

void frmKopieFile::runExport()
{
    m_running = true;
    m_stopping = false;
    m_parts.form.setOutcome({}, true);
    m_parts.form.setRunning(true);
    std::optional<ExportResult> result;
    QString failure;
    try {
        result = m_export.run({m_list, path::withSeparator(m_folder), m_template});
    } catch (const DbError& error) {
        failure = error.text();
        m_parts.logFailures({{importerror::kDatabase, failure}});
    }
    m_running = false;
    tellProgress({}, 0, 0);
    m_parts.form.setRunning(false);
    logSection(m_parts.texts.text(u"meldExpEnd"));
    noteFolder();
    if (result) {
        tell(*result);
    } else {
        log(u"SavePlaylist: "_s + failure);
        m_parts.form.setOutcome(failure, false);
    }
}

void frmKopieFile::stop()
{
    if (m_running && !m_stopping) {
        m_stopping = true;
        logSection(m_parts.texts.text(u"meldExpAbbruch"));
        m_export.stop();
    }
}

void frmKopieFile::cmdAbbruch()
{
    if (m_running) {
        stop();
    } else {
        m_parts.form.close();
    }
}

bool frmKopieFile::mayClose()
{
    m_closeAfterwards = m_running;
    stop();
    return !m_running;
}

// ---- what is told

void frmKopieFile::log(const QString& line)
{
    if (m_log.append(line)) {
        m_parts.form.setLog(m_log.text());
    } else {
        m_parts.form.appendLog(line);
    }
}

void frmKopieFile::logSection(const QString& line)
{
    m_log.appendSection(line);
    m_parts.form.setLog(m_log.text());
}

QString frmKopieFile::outcomeOf(const ExportResult& result) const
{
    const ConfigObjects& texts = m_parts.texts;
    switch (result.end) {
    case ExportResult::End::Done:
        return texts.text(countedKey(u"export.done"_s, result.count), result.copied, result.count);
    case ExportResult::End::Stopped:
        return texts.text(countedKey(u"export.stopped"_s, result.count), result.copied,
                          result.count);
    case ExportResult::End::Empty:
        return texts.text(u"export.empty");
    case ExportResult::End::NoSpace:
        return texts.text(u"export.nospace", sizeText(texts, result.needed),
                          sizeText(texts, result.free));
    case ExportResult::End::ListNotWritten:
        return texts.text(u"export.list.failed", path::fileName(result.listFile),
                          systemReasonText(texts, result.detail));
    }
    return {};
}

QString frmKopieFile::reasonOf(const ExportFailure& failure) const
{
    switch (failure.reason) {
    case ExportFailure::Reason::NotFound:
        return m_parts.texts.text(u"export.failure.notfound");
    case ExportFailure::Reason::NoSpace:
        return m_parts.texts.text(u"export.failure.nospace");
    case ExportFailure::Reason::LibraryFile:
        return m_parts.texts.text(u"export.failure.library");
    case ExportFailure::Reason::System:
        break;
    }
    return systemReasonText(m_parts.texts, failure.detail);
}

QString frmKopieFile::logAll(const ExportResult& result) const
{
    std::vector<ExportFault> faults;
    for (const ExportFailure& failure : result.failures) {
        const bool isGone = failure.reason == ExportFailure::Reason::NotFound;
        faults.push_back(
            {isGone ? importerror::kFileNotFound : importerror::kFile,
             u"%1 -> %2: %3"_s.arg(failure.DName, path::join(m_folder, failure.relative),
                                   reasonOf(failure))});
    }
    return m_parts.logFailures(faults);
}

void frmKopieFile::tell(const ExportResult& result)
{
    using End = ExportResult::End;
    const QString outcome = outcomeOf(result);
    const bool isGood =
        result.end == End::Done && result.failures.empty() && result.leftOut.isEmpty();
    log(outcome);
    m_parts.form.setOutcome(outcome, isGood);
    for (const QString& name : result.replaced) {
        log(m_parts.texts.text(u"export.replaced", name));
    }
    if (result.end == End::ListNotWritten) {
        m_parts.logFailures({{importerror::kFile, result.listFile + u": "_s + result.detail}});
    }
    if (result.end == End::NoSpace || result.end == End::ListNotWritten) {
        m_parts.warnings.ShowWarning(outcome, WarningType::Note, m_parts.texts.text(u"achtung"),
                                     result.end == End::NoSpace ? u"export.nospace"_s
                                                                : u"export.list.failed"_s);
    }
    if (!result.failures.empty() || !result.replaced.isEmpty()) {
        tellFailures(result);
    }
    if (!result.leftOut.isEmpty()) {
        const QString missing = leftOutText(m_parts.texts, result.leftOut);
        log(missing);
        m_parts.warnings.ShowWarning(missing, WarningType::Note,
                                     m_parts.texts.text(u"export.failed.title"), u"m3u.leftout"_s);
    }
}

void frmKopieFile::tellFailures(const ExportResult& result)
{
    const ConfigObjects& texts = m_parts.texts;
    const QString kept = result.failures.empty() ? QString() : logAll(result);
    QStringList lines;
    for (const ExportFailure& failure : result.failures) {
        const QString line = failure.DName + u": "_s + reasonOf(failure);
        log(line);
        lines.append(line);
    }
    for (const QString& name : result.replaced) {
        lines.append(texts.text(u"export.replaced", name));
    }
    const qsizetype more = lines.size() - qsizetype(kNamedFailures);
    if (more > 0) {
        lines.resize(kNamedFailures);
        lines.append(kept.isEmpty() ? texts.text(u"export.failed.more", more)
                                    : texts.text(u"export.failed.all", more, kept));
    }
    m_parts.warnings.ShowWarning(outcomeOf(result) + u"\n\n"_s + lines.join(u'\n'),
                                 WarningType::Note, texts.text(u"export.failed.title"),
                                 u"export.failed.title"_s);
}

} // namespace melovane
