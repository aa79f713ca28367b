// Random changes of hundreds of differently made files: the sound and everything of other programs
// is the same byte for byte behind each of them, and other readers see what was written.

#include "platform/linux/id3_tags.h"
#include "platform/linux/linux_tag_writer.h"
#include "platform/linux/tag_reader.h"
#include "raw_tag.h"
#include "support/temp_folder.h"
#include "tag_corpus.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <commentsframe.h>
#include <gtest/gtest.h>
#include <id3v2tag.h>
#include <mpegfile.h>
#include <popularimeterframe.h>
#include <tdebuglistener.h>
#include <textidentificationframe.h>

#include <array>

namespace {

using namespace melovane;
using namespace melovane::linux_media;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

constexpr int kFiles = 357; // every shape in every version, seven times

class SilentListener : public TagLib::DebugListener
{
    void printMessage(const TagLib::String&) override {}
};

using Change = std::optional<QString> TagChanges::*;

struct Field
{
    Change change;
    QString (*read)(const TrackTags& tags);
    QString (*readByTagLibrary)(TagLib::ID3v2::Tag& tag);
    const char* name;
};

QString toText(const TagLib::String& text)
{
    return QString::fromStdString(text.to8Bit(true));
}

template <const char* Id> QString frameText(TagLib::ID3v2::Tag& tag)
{
    const auto& frames = tag.frameListMap()[Id];
    const auto* frame = frames.isEmpty()
                            ? nullptr
                            : dynamic_cast<TagLib::ID3v2::TextIdentificationFrame*>(frames.front());
    // Artists and genres of version 2.4 are values of their own in the file.
    return frame == nullptr ? QString() : toText(frame->fieldList().toString("; "));
}

template <const char* Name> QString userText(TagLib::ID3v2::Tag& tag)
{
    const auto* frame = TagLib::ID3v2::UserTextIdentificationFrame::find(&tag, Name);
    return frame == nullptr || frame->fieldList().size() < 2 ? QString()
                                                             : toText(frame->fieldList()[1]);
}

QString stars(TagLib::ID3v2::Tag& tag)
{
    for (auto* each : tag.frameListMap()["POPM"]) {
        const auto* frame = dynamic_cast<TagLib::ID3v2::PopularimeterFrame*>(each);
        if (frame != nullptr && toText(frame->email()) == QString::fromLatin1(kRatingAddress)) {
            return ratingOfByte(frame->rating());
        }
    }
    return {};
}

QString comment(TagLib::ID3v2::Tag& tag)
{
    const auto* frame = TagLib::ID3v2::CommentsFrame::findByDescription(&tag, "");
    return frame == nullptr ? QString() : toText(frame->text());
}

constexpr char kTit2[] = "TIT2";
constexpr char kTpe1[] = "TPE1";
constexpr char kTalb[] = "TALB";
constexpr char kTcon[] = "TCON";
constexpr char kTdrc[] = "TDRC";
constexpr char kTrck[] = "TRCK";
constexpr char kTbpm[] = "TBPM";
constexpr char kUser2[] = "User2";

const std::array kFields = std::to_array<Field>({
    {&TagChanges::Titel, [](const TrackTags& t) { return t.id3v2.Titel; }, frameText<kTit2>,
     "Titel"},
    {&TagChanges::Interpret, [](const TrackTags& t) { return t.id3v2.Interpret; }, frameText<kTpe1>,
     "Interpret"},
    {&TagChanges::Album, [](const TrackTags& t) { return t.id3v2.Album; }, frameText<kTalb>,
     "Album"},
    {&TagChanges::Genre, [](const TrackTags& t) { return t.id3v2.Genre; }, frameText<kTcon>,
     "Genre"},
    {&TagChanges::Jahr, [](const TrackTags& t) { return t.id3v2.Jahr; }, frameText<kTdrc>, "Jahr"},
    {&TagChanges::Track, [](const TrackTags& t) { return t.id3v2.Track.section(u'/', 0, 0); },
     [](TagLib::ID3v2::Tag& tag) { return frameText<kTrck>(tag).section(u'/', 0, 0); }, "Track"},
    {&TagChanges::BPM, [](const TrackTags& t) { return t.BPM; }, frameText<kTbpm>, "BPM"},
    {&TagChanges::Kommentar, [](const TrackTags& t) { return t.id3v2.Kommentar; }, comment,
     "Kommentar"},
    {&TagChanges::Note, [](const TrackTags& t) { return t.Note; }, stars, "Note"},
    {&TagChanges::User2, [](const TrackTags& t) { return t.User2; }, userText<kUser2>, "User2"},
    {&TagChanges::Kategorie, [](const TrackTags& t) { return t.Kategorie; }, nullptr, "Kategorie"},
});

QString randomValue(std::mt19937& random, const Field& field)
{
    if (random() % 6 == 0) {
        return {};
    }
    if (field.change == &TagChanges::Note) {
        return QString::number(random() % 5 + 1);
    }
    if (field.change == &TagChanges::Jahr) {
        return QString::number(1950 + random() % 80);
    }
    if (field.change == &TagChanges::Track || field.change == &TagChanges::BPM) {
        return QString::number(random() % 200 + 1);
    }
    static const QString kLetters = u"abc XYZ äöüßÉÿ'\"&*[]?;-ЖΩ中文€😀"_s;
    const qsizetype letters = random() % 2 == 0 ? 20 : kLetters.size() - 2;
    QString text = u"v"_s;
    for (quint32 left = random() % 8 == 0 ? random() % 2500 : random() % 40; left > 0; --left) {
        text += kLetters.at(qsizetype(random() % quint32(letters)));
    }
    return text + u"."_s;
}

/// A file of the corpus and what its tag must show.
struct Edited
{
    CorpusFile made;
    QString path;
    std::array<QString, kFields.size()> values;
    std::array<bool, kFields.size()> isOurs{}; ///< written by us since
    bool isWritten = false;
};

class TagCorpus : public testing::Test
{
protected:
    void SetUp() override
    {
        TagLib::setDebugListener(&m_silent);
        for (int i = 0; i < kFiles; ++i) {
            Edited file;
            file.made = corpusFile(i, m_random);
            file.path = m_folder.write(u"%1.mp3"_s.arg(i), file.made.bytes());
            const MediaReading reading = m_reader.read(file.path);
            EXPECT_EQ(reading.fault, MediaFault::None) << file.made.shape;
            for (size_t field = 0; field < kFields.size(); ++field) {
                file.values[field] = kFields[field].read(reading.tags);
            }
            m_files.push_back(std::move(file));
        }
    }

    void TearDown() override { TagLib::setDebugListener(nullptr); }

    /// Edits of a run: some hundred as a rule, more for tools/prove_tags.sh.
    [[nodiscard]] static int edits()
    {
        const int asked = qEnvironmentVariableIntValue("MLV_TAG_EDITS");
        return asked > 0 ? asked : 400;
    }

    TagChanges randomChanges(Edited& file)
    {
        TagChanges changes;
        for (size_t field = 0; field < kFields.size(); ++field) {
            if (m_random() % 4 == 0) {
                const QString value = randomValue(m_random, kFields[field]);
                changes.*kFields[field].change = value;
                file.isOurs[field] = file.isOurs[field] || file.values[field] != value;
                file.values[field] = value;
            }
        }
        if (m_random() % 10 == 0) {
            changes.cover =
                CoverPicture{QByteArray(int(m_random() % 20'000), '\xFF'), u"image/jpeg"_s};
        }
        return changes;
    }

    /// Bytes of the tags at the beginning, as their headers say.
    static qint64 frontOf(const QByteArray& bytes)
    {
        qint64 end = 0;
        while (bytes.mid(end, 3) == "ID3") {
            end +=
                10 + rawNumber(bytes.mid(end + 6, 4), 7) + ((bytes[end + 5] & 0x10) != 0 ? 10 : 0);
        }
        return end;
    }

    void check(const Edited& file)
    {
        SCOPED_TRACE(file.made.shape);
        QFile opened(file.path);
        ASSERT_TRUE(opened.open(QIODevice::ReadOnly));
        const QByteArray bytes = opened.readAll();
        const qint64 front = frontOf(bytes);
        const qint64 end = bytes.size() - file.made.oldTag.size();
        EXPECT_TRUE(bytes.mid(front, end - front) == file.made.sound);
        EXPECT_EQ(bytes.mid(end, 3),
                  file.made.oldTag.first(std::min<qsizetype>(3, file.made.oldTag.size())));
        if (!file.isWritten) {
            return;
        }
        qsizetype place = 0;
        for (const QByteArray& foreign : file.made.foreign) {
            const qsizetype found = bytes.first(front).indexOf(foreign, place);
            EXPECT_GE(found, place) << foreign.left(4).toStdString();
            place = found + foreign.size();
        }
        checkValues(file);
    }

    void checkValues(const Edited& file)
    {
        const MediaReading reading = m_reader.read(file.path);
        EXPECT_EQ(reading.fault, MediaFault::None);
        TagLib::MPEG::File other(QFile::encodeName(file.path).constData(), false);
        TagLib::ID3v2::Tag* const tag = other.ID3v2Tag();
        for (size_t field = 0; field < kFields.size(); ++field) {
            SCOPED_TRACE(kFields[field].name);
            EXPECT_EQ(kFields[field].read(reading.tags), file.values[field]);
            if (file.made.isReadByTagLibrary && file.isOurs[field] &&
                kFields[field].readByTagLibrary != nullptr) {
                EXPECT_EQ(kFields[field].readByTagLibrary(*tag), file.values[field]);
            }
        }
    }

    /// Leaves the files and what was written into them in a folder, for readers of other languages.
    void keepFor(const QDir& folder)
    {
        QJsonArray list;
        for (const Edited& file : m_files) {
            if (!file.isWritten) {
                continue;
            }
            const QString name = QFileInfo(file.path).fileName();
            EXPECT_TRUE(QFile::copy(file.path, folder.filePath(name)));
            QJsonObject values;
            for (size_t field = 0; field < kFields.size(); ++field) {
                if (file.isOurs[field]) {
                    values.insert(QString::fromLatin1(kFields[field].name), file.values[field]);
                }
            }
            list.append(QJsonObject{{u"file"_s, name},
                                    {u"shape"_s, QString::fromStdString(file.made.shape)},
                                    {u"values"_s, values}});
        }
        QFile told(folder.filePath(u"values.json"_s));
        EXPECT_TRUE(told.open(QIODevice::WriteOnly) &&
                    told.write(QJsonDocument(list).toJson()) > 0);
    }

    SilentListener m_silent;
    std::mt19937 m_random{357};
    TempFolder m_folder;
    LinuxTagReader m_reader;
    std::vector<Edited> m_files;
};

TEST_F(TagCorpus, SoundAndForeignFramesAreTheSameBytesAndEveryReaderSeesTheValues)
{
    LinuxTagWriter writer(m_folder.file(u"state"_s));
    int written = 0;
    for (int edit = 0; edit < edits() && !HasFailure(); ++edit) {
        // Every file has its turn before one has a second.
        Edited& file = m_files[size_t(edit < kFiles ? edit : int(m_random() % kFiles))];
        SCOPED_TRACE("edit " + std::to_string(edit));
        const std::vector<TagWork> work = {{file.path, randomChanges(file)}};
        const TagWriting result = writer.write(work).at(0);
        EXPECT_EQ(result.fault, TagWriteFault::None) << file.made.shape;
        file.isWritten = file.isWritten || result.changed;
        written += result.changed ? 1 : 0;
        check(file);
    }
    EXPECT_GT(written, edits() / 2);
    for (const Edited& file : m_files) {
        check(file);
    }
    if (const QString folder = qEnvironmentVariable("MLV_TAG_FILES"); !folder.isEmpty()) {
        keepFor(QDir(folder));
    }
}

} // namespace
