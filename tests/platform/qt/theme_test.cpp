#include "platform/qt/skin.h"

#include <QApplication>
#include <QFile>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

QString shippedTheme(const QString& name)
{
    QFile file(QString::fromUtf8(MLV_RESOURCES) + u"/themes/"_s + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QString::fromUtf8(file.readAll());
}

const Theme kBuiltIn = Theme::fromPalette(QPalette(Qt::lightGray, Qt::white));

TEST(ReadTheme, TakesNamesWithoutRegardToCaseAndSkipsComments)
{
    const ThemeFile file =
        readTheme(u"; for the stage\r\nName = Dunkel \r\n gridcolor = #102030\r\n\r\n"_s, kBuiltIn);
    EXPECT_EQ(file.name, u"Dunkel"_s);
    EXPECT_EQ(file.theme.colour(ThemeRole::GridColor), (Colour{0x10, 0x20, 0x30}));
    EXPECT_EQ(file.colours, 1);
    EXPECT_TRUE(file.skipped.isEmpty());
}

TEST(ReadTheme, AColourThatIsNotNamedKeepsTheBuiltInOne)
{
    const ThemeFile file = readTheme(u"GridColor=#102030\n"_s, kBuiltIn);
    EXPECT_EQ(file.theme.colour(ThemeRole::Text), kBuiltIn.colour(ThemeRole::Text));
}

TEST(ReadTheme, ListsWhatItSkips)
{
    const ThemeFile file = readTheme(u"GridColor=red\nNoSuchName=#000000\njunk\n=\n"_s, kBuiltIn);
    EXPECT_EQ(file.skipped,
              (QStringList{u"GridColor=red"_s, u"NoSuchName=#000000"_s, u"junk"_s, u"="_s}));
    EXPECT_EQ(file.theme, kBuiltIn);
}

TEST(ReadTheme, AnyBytesAreReadWithoutFailing)
{
    QString junk;
    for (int sign = 0; sign < 5000; ++sign) {
        junk.append(QChar((sign * 7919) & 0xFFFF));
    }
    EXPECT_EQ(readTheme(junk, kBuiltIn).colours, 0);
}

TEST(ReadTheme, EveryRoleHasANameOfItsOwnThatIsReadBack)
{
    for (int index = 0; index < kThemeRoles; ++index) {
        const auto role = static_cast<ThemeRole>(index);
        const ThemeFile file = readTheme(Theme::nameOf(role) + u"=#010203"_s, kBuiltIn);
        EXPECT_EQ(file.theme.colour(role), (Colour{1, 2, 3})) << Theme::nameOf(role).toStdString();
    }
}

class ShippedTheme : public testing::TestWithParam<const char*>
{};

TEST_P(ShippedTheme, NamesEveryColour)
{
    const ThemeFile file = readTheme(shippedTheme(QString::fromLatin1(GetParam())), kBuiltIn);
    EXPECT_EQ(file.colours, kThemeRoles);
    EXPECT_TRUE(file.skipped.isEmpty());
    EXPECT_FALSE(file.name.isEmpty());
}

TEST_P(ShippedTheme, ItsTextsCanBeReadOnItsGrounds)
{
    const Theme theme = readTheme(shippedTheme(QString::fromLatin1(GetParam())), kBuiltIn).theme;
    for (const auto ground :
         {ThemeRole::Panel, ThemeRole::GridHeadColor, ThemeRole::GridColor,
          ThemeRole::GridColorAlternating, ThemeRole::GridColorSelGotFocus,
          ThemeRole::GridColorSelLostFocus, ThemeRole::TextField, ThemeRole::GridColorAktivePlay}) {
        EXPECT_GE(contrast(theme.colour(ThemeRole::Text), theme.colour(ground)), kReadableContrast)
            << Theme::nameOf(ground).toStdString();
    }
    for (const auto ground : {ThemeRole::Panel, ThemeRole::GridHeadColor, ThemeRole::TextField}) {
        EXPECT_GE(contrast(theme.colour(ThemeRole::TextSecond), theme.colour(ground)),
                  kReadableContrast - 0.3)
            << Theme::nameOf(ground).toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Both,
                         ShippedTheme,
                         testing::Values("melovane-dark.skn", "melovane-light.skn"),
                         [](const auto& which) { return which.index == 0 ? "Dark" : "Light"; });

TEST(Theme, TheDesktopsPaletteGivesReadableColours)
{
    for (const Qt::GlobalColor base : {Qt::white, Qt::black}) {
        QPalette palette(base == Qt::white ? QColor(0xEF, 0xEF, 0xEF) : QColor(0x30, 0x30, 0x30));
        palette.setColor(QPalette::Base, base);
        palette.setColor(QPalette::Text, base == Qt::white ? Qt::black : Qt::white);
        const Theme theme = Theme::fromPalette(palette);
        EXPECT_EQ(theme.isDark(), base == Qt::black);
        for (const auto ground : {ThemeRole::GridColor, ThemeRole::GridColorSelLostFocus}) {
            EXPECT_GE(contrast(theme.colour(ThemeRole::Text), theme.colour(ground)),
                      kReadableContrast);
        }
    }
}

TEST(Skin, ATextWithoutAColourChangesNothing)
{
    Skin skin(*qApp);
    QSignalSpy changed(&skin, &Skin::changed);
    EXPECT_FALSE(skin.load(u"Name=Leer\n"_s));
    EXPECT_FALSE(skin.isLoaded());
    EXPECT_EQ(changed.count(), 0);
}

TEST(Skin, LoadingAndClearingDressTheApplication)
{
    const QPalette before = QApplication::palette();
    Skin skin(*qApp);
    QSignalSpy changed(&skin, &Skin::changed);
    ASSERT_TRUE(skin.load(shippedTheme(u"melovane-dark.skn"_s)));
    EXPECT_EQ(QApplication::palette().color(QPalette::Text), QColor(0xDD, 0xE1, 0xE7));
    EXPECT_TRUE(skin.theme().isDark());
    skin.clear();
    EXPECT_EQ(QApplication::palette().color(QPalette::Text), before.color(QPalette::Text));
    EXPECT_EQ(changed.count(), 2);
    qApp->setStyleSheet({});
}

TEST(StyleSheet, LeavesNoPlaceholder)
{
    const QString sheet = styleSheetFor(kBuiltIn, 17);
    for (int index = 0; index < kThemeRoles; ++index) {
        EXPECT_FALSE(sheet.contains(u'{' + Theme::nameOf(static_cast<ThemeRole>(index))));
    }
    EXPECT_FALSE(sheet.contains(u"{line}"_s) || sheet.contains(u"{pad}"_s) ||
                 sheet.contains(u"{field}"_s));
}

} // namespace
} // namespace melovane
