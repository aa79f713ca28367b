#include "fuzz/formats/formats.h"
#include "fuzz/formats/scratch.h"
#include "platform/linux/linux_files.h"
#include "playlistfiles/kiv_interface.h"

namespace melovane::fuzz {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kName = u"global.kiv"_s;

QString check(const QByteArray& bytes)
{
    static const Scratch scratch;
    static LinuxFiles files;
    static_cast<void>(scratch.file(kName, bytes));
    KivInterface state(files, scratch.folder(), scratch.folder());
    state.KivLoad();
    for (const QString& text :
         {state.FID, state.DName, state.file, state.Interpret, state.Titel, state.Path}) {
        if (text.contains(u'\n') || text.contains(u'\r')) {
            return u"a text of two lines"_s;
        }
    }
    // The identifier alone is read up to a comma; what was in quotes does not come back.
    state.FID = u"800000000001"_s;
    state.KivSave();
    const QByteArray written = scratch.read(kName);
    KivInterface again(files, scratch.folder(), scratch.folder());
    again.KivLoad();
    again.KivSave();
    return scratch.read(kName) == written
               ? QString()
               : u"reads back otherwise: "_s + QString::fromUtf8(written);
}

std::vector<QByteArray> seeds()
{
    const Scratch scratch;
    LinuxFiles files;
    KivInterface state(files, scratch.folder(), scratch.folder());
    state.KivSave();
    const QByteArray empty = scratch.read(kName);
    state.FID = u"800000000001"_s;
    state.DName = u"ä, b.mp3"_s;
    state.file = u"/music/ä, b.mp3"_s;
    state.replyTo = 4711;
    state.PLID = Plid(17);
    state.FrameStart = 40;
    state.FrameStop = -1;
    state.Interpret = u"\"Quote\""_s;
    state.Titel = u" blanks "_s;
    state.Path = u"/music"_s;
    state.tempo = 120;
    state.KivSave();
    const QByteArray full = scratch.read(kName);
    return {empty, full, QByteArray(full).replace("\n", "\r\n"), full.left(60)};
}

} // namespace

Format sampleState()
{
    return {"sample_state", check, seeds};
}

} // namespace melovane::fuzz
