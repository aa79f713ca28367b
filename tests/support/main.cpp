#include <QApplication>
#include <QTemporaryDir>

#include <gmock/gmock.h>

// The leak check of the asan preset asks this: on a real display the desktop's message library
// keeps one block for as long as the process lives, which is not ours to free.
extern "C" const char* __lsan_default_suppressions(); // NOLINT(bugprone-reserved-identifier)

extern "C" const char* __lsan_default_suppressions() // NOLINT(bugprone-reserved-identifier)
{
    return "leak:libdbus-1\n";
}

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
