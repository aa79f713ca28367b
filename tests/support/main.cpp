#include <QApplication>
#include <QTemporaryDir>

#include <gmock/gmock.h>

int main(int argc, char** argv)
{
    // A test must never meet the user's own settings, library or running suite.
    QTemporaryDir home;
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"}) {
        qputenv(name, home.path().toUtf8());
    }
    QApplication application(argc, argv);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
