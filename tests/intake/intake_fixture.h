#pragma once

#include "config/config_objects.h"
#include "config/melovane_configuration.h"
#include "intake/intake.h"
#include "platform/linux/audio_identity.h"
#include "platform/linux/tag_reader.h"
#include "support/mp3_maker.h"
#include "support/suite_fixture.h"

namespace melovane::test {

/// A suite, a folder of music and imports into it.
class IntakeFixture : public SuiteFixture
{
protected:
    IntakeFixture() { MelovaneConfiguration::fill(texts); }

    [[nodiscard]] IntakeParts parts()
    {
        return {*suite.engine, suite.files,        reader, suite.clock,
                texts,         suite.dataFolder(), &audio, &suite.files};
    }

    /// Makes folder of the music stand for a folder that rows have stored.
    void mapFolder(const QString& stored, const QString& folder)
    {
        suite.write(QStringLiteral("ChangeDir.conf"),
                    (stored + QStringLiteral(" ?? ") + music.file(folder) + u'/').toUtf8());
    }

    [[nodiscard]] IntakeOrder order(IntakeMode mode = IntakeMode::NewFiles)
    {
        return {mode, suite.dbName(), {music.path()}, 1};
    }

    IntakeReport run(IntakeOrder what)
    {
        Intake intake(parts(), std::move(what));
        while (intake.step(std::chrono::seconds(1))) {
        }
        return intake.report();
    }

    IntakeReport import() { return run(order()); }

    IntakeReport reread() { return run(order(IntakeMode::ChangedFiles)); }

    [[nodiscard]] int rows()
    {
        return suite.value(QStringLiteral("select count(*) from db_all")).toLong();
    }

    /// A column of the row of a file.
    [[nodiscard]] Value of(const QString& name, const QString& column)
    {
        return suite.value(
            QStringLiteral("select %1 from db_all where DName='%2'").arg(column, name));
    }

    TempFolder music;
    ConfigObjects texts{suite.folders.paths(), suite.folders.profile(), suite.files};
    linux_media::LinuxTagReader reader;
    linux_media::LinuxAudioIdentity audio;
};

} // namespace melovane::test
