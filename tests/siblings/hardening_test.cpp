#include "support/temp_folder.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <elf.h>
#include <gtest/gtest.h>

#include <cstring>
#include <map>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// What the loader of the system is told about a program.
class ElfFile
{
public:
    explicit ElfFile(const QString& name)
    {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        m_bytes = file.readAll();
        EXPECT_TRUE(m_bytes.startsWith(ELFMAG)) << name.toStdString();
        const auto header = at<Elf64_Ehdr>(0);
        type = header.e_type;
        for (Elf64_Half i = 0; i < header.e_phnum; ++i) {
            const auto part = at<Elf64_Phdr>(header.e_phoff + i * sizeof(Elf64_Phdr));
            hasInterpreter |= part.p_type == PT_INTERP;
            hasReadOnlyRelocations |= part.p_type == PT_GNU_RELRO;
            hasExecutableStack |= part.p_type == PT_GNU_STACK && (part.p_flags & PF_X) != 0;
            if (part.p_type == PT_DYNAMIC) {
                readDynamic(part);
            }
        }
    }

    /// Whether it takes a function of that name from a library.
    [[nodiscard]] bool uses(const char* function) const
    {
        return m_bytes.contains(QByteArray(1, '\0') + function + QByteArray(1, '\0'));
    }

    [[nodiscard]] Elf64_Xword entry(Elf64_Sxword tag) const
    {
        const auto found = m_dynamic.find(tag);
        return found == m_dynamic.end() ? 0 : found->second;
    }

    Elf64_Half type = ET_NONE;
    bool hasInterpreter = false;
    bool hasReadOnlyRelocations = false;
    bool hasExecutableStack = false;

private:
    template <typename T> [[nodiscard]] T at(Elf64_Off place) const
    {
        T value = {};
        if (place + sizeof value <= Elf64_Off(m_bytes.size())) {
            std::memcpy(&value, m_bytes.constData() + place, sizeof value);
        }
        return value;
    }

    void readDynamic(const Elf64_Phdr& part)
    {
        for (Elf64_Xword i = 0; i < part.p_filesz / sizeof(Elf64_Dyn); ++i) {
            const auto row = at<Elf64_Dyn>(part.p_offset + i * sizeof(Elf64_Dyn));
            m_dynamic[row.d_tag] = row.d_un.d_val;
        }
    }

    QByteArray m_bytes;
    std::map<Elf64_Sxword, Elf64_Xword> m_dynamic;
};

class Hardening : public testing::TestWithParam<QString>
{
protected:
    const ElfFile program{GetParam()};
};

TEST_P(Hardening, TheProgramLiesElsewhereAtEveryStart)
{
    EXPECT_EQ(program.type, ET_DYN);
    EXPECT_TRUE(program.hasInterpreter);
    EXPECT_TRUE(program.entry(DT_FLAGS_1) & DF_1_PIE);
}

TEST_P(Hardening, WhatTheLoaderFillsInIsFilledAtOnceAndThenReadOnly)
{
    EXPECT_TRUE(program.hasReadOnlyRelocations);
    const bool now =
        (program.entry(DT_FLAGS) & DF_BIND_NOW) != 0 || (program.entry(DT_FLAGS_1) & DF_1_NOW) != 0;
    EXPECT_TRUE(now);
    EXPECT_FALSE(program.hasExecutableStack);
}

#ifdef MLV_RELEASE_BUILD
TEST_P(Hardening, AnOverrunOfTheStackEndsTheProgram)
{
    EXPECT_TRUE(program.uses("__stack_chk_fail"));
}
#endif

INSTANTIATE_TEST_SUITE_P(All,
                         Hardening,
                         testing::ValuesIn(QString::fromUtf8(MLV_PROGRAMS).split(u'|')),
                         [](const auto& program) {
                             return QFileInfo(program.param).fileName().remove(u'.').toStdString();
                         });

TEST(ReleasePreset, CompilesEveryFileOfOursWithChecksOfStackAndBuffers)
{
    const TempFolder folder;
    QProcess process;
    process.setWorkingDirectory(QString::fromUtf8(MLV_ROOT));
    process.start(QString::fromUtf8(MLV_CMAKE),
                  {u"--preset"_s, u"release"_s, u"-B"_s, folder.path()});
    ASSERT_TRUE(process.waitForFinished(250'000));
    ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    const QJsonArray files =
        QJsonDocument::fromJson(folder.read(u"compile_commands.json"_s)).array();
    int count = 0;
    for (const auto& file : files) {
        const QString command = file.toObject().value(u"command"_s).toString();
        for (const QString& option :
             {u" -O"_s, u" -D_FORTIFY_SOURCE=2"_s, u" -fstack-protector-strong"_s, u" -fPI"_s}) {
            ASSERT_TRUE(command.contains(option))
                << option.toStdString() << " is missing in " << command.toStdString();
        }
        ++count;
    }
    EXPECT_GT(count, 100);
}

} // namespace
} // namespace melovane::test
