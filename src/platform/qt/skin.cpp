#include "platform/qt/skin.h"

#include <QApplication>
#include <QEvent>
#include <QFontMetrics>
#include <QIcon>
#include <QScopedValueRollback>
#include <QStyle>
#include <QStyleFactory>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Side of the picture of a menu entry; entries without one are as high.
constexpr int kMenuIcon = 16;

/// Names of roles in braces, and sizes: {line} is the height of a line, {row} that of a menu entry,
/// {pad} the space above and below it in a control, {box} the side of a check box, {arrow} that of
/// an arrow, {round} what makes it a circle, {button} the least width of a button.
constexpr char16_t kSheet[] = uR"(
QMainWindow, QWidget#Frame { background: {BackColorSizer}; }
QMainWindow::separator { width: 0; height: 0; }
QSplitter::handle { background: transparent; image: none; }
QMenuBar { background: {GridHeadColor}; color: {Text}; padding: 3px 6px; border: none;
  border-bottom: 1px solid {Hairline}; }
QMenuBar::item { background: transparent; padding: {pad}px 10px; border-radius: 4px; }
QMenuBar::item:selected { background: {GridColorSelLostFocus}; }
QMenuBar::item:pressed { background: {GridColorSelGotFocus}; }
QMenu { background: {GridHeadColor}; color: {Text}; border: 1px solid {Hairline}; padding: 5px; }
QMenu::item { padding: {pad}px 28px {pad}px 10px; border-radius: 4px; min-height: {row}px; }
QMenu::item:selected { background: {GridColorSelGotFocus}; color: {Text}; }
QMenu::item:disabled { color: {TextDisabled}; }
QMenu#mnuMoreResult::item:disabled { color: {Text}; }
QMenu::icon { padding-left: 8px; }
QMenu::indicator { width: {line}px; height: {line}px; margin-left: 6px; }
QMenu::indicator:checked { image: url(:/style/check.svg); }
QMenu::indicator:unchecked { image: none; }
QMenu::separator { height: 1px; background: {Hairline}; margin: 5px 8px; }
QToolTip { background: {GridColorSelLostFocus}; color: {Text}; border: 1px solid {TextDisabled};
  padding: 4px 7px; }
QWidget#ToolRow { background: {GridHeadColor}; border-bottom: 1px solid {Hairline};
  border-top-left-radius: 5px; border-top-right-radius: 5px; }
QWidget#StatusBar1 { background: {GridHeadColor}; border-top: 1px solid {Hairline}; }
QWidget#StatusBar1 QLabel { color: {TextSecond}; padding: 0 12px; }
QWidget#StatusBar1 QLabel#StatusElapsed { color: {Text}; }
QWidget#StatusBar1 QLabel#MonitorLoudspeaker { padding: 0 0 0 10px; }
QFrame#StatusLine { background: {Hairline}; border: none; }
QLabel#MatchCount { color: {TextSecond}; }
QToolButton { background: transparent; border: 1px solid transparent; border-radius: 4px;
  padding: 4px; color: {Text}; }
QToolButton:hover { background: {GridColorSelLostFocus}; }
QToolButton:pressed, QToolButton:checked { background: {GridColorSelGotFocus}; }
QToolButton:focus { border-color: {Accent}; }
QToolButton::menu-indicator { image: none; }
QComboBox#Text1 { background: {TextField}; color: {Text}; border: 1px solid {Hairline};
  border-radius: 4px; padding: 2px 2px 2px 4px; min-height: {field}px; }
QComboBox#Text1:hover { border-color: {TextDisabled}; }
QComboBox#Text1:focus { border-color: {Accent}; }
QComboBox#Text1::drop-down { border: none; width: {arrow}px; }
QComboBox#Text1::down-arrow { image: url(:/style/down.svg); width: {arrow}px; height: {arrow}px; }
QComboBox#Text1 QLineEdit { background: transparent; border: none; padding: 0;
  selection-background-color: {GridColorSelGotFocus}; selection-color: {Text}; }
QWidget#EditTag1 QLineEdit, QWidget#EditTag1 QComboBox { background: {TextField}; color: {Text};
  border: 1px solid {Hairline}; border-radius: 4px; padding: 1px 6px; min-height: {field}px;
  selection-background-color: {GridColorSelGotFocus}; selection-color: {Text}; }
QWidget#EditTag1 QLineEdit:hover, QWidget#EditTag1 QComboBox:hover { border-color: {TextDisabled}; }
QWidget#EditTag1 QLineEdit:focus, QWidget#EditTag1 QComboBox:focus { border: 2px solid {Accent};
  padding: 0px 5px; }
QWidget#EditTag1 QLineEdit:disabled, QWidget#EditTag1 QComboBox:disabled { color: {TextDisabled}; }
QWidget#EditTag1 QLineEdit:read-only { background: transparent; color: {TextSecond}; }
QWidget#EditTag1 QComboBox::drop-down { border: none; width: {arrow}px; }
QWidget#EditTag1 QComboBox::down-arrow { image: url(:/style/down.svg); width: {arrow}px;
  height: {arrow}px; }
QWidget#EditTag1 QComboBox QLineEdit { background: transparent; border: none; padding: 0;
  min-height: 0; }
QWidget#EditTag1 QComboBox QLineEdit:focus { border: none; padding: 0; }
QWidget#EditTag1 QScrollArea { background: transparent; border: none; }
QWidget#EditTag1 QScrollArea#ScrollFrame { background: {TextField}; border: 1px solid {Hairline};
  border-radius: 4px; }
QWidget#EditTag1 QScrollArea#ScrollFrame:focus { border-color: {Accent}; }
QWidget#EditTag1 QToolButton#cmdNewGenre, QWidget#EditTag1 QToolButton#cmdStart,
QWidget#EditTag1 QToolButton#cmdStop { border-color: {Hairline}; }
QWidget#EditTag1 QToolButton#cmdNewGenre:focus, QWidget#EditTag1 QToolButton#cmdStart:focus,
QWidget#EditTag1 QToolButton#cmdStop:focus { border-color: {Accent}; }
QPushButton { background: {GridHeadColor}; color: {Text}; border: 1px solid {Hairline};
  border-radius: 4px; padding: {pad}px 14px; min-height: {line}px; }
QPushButton:hover { background: {GridColorSelLostFocus}; }
QPushButton:pressed { background: {GridColorSelGotFocus}; }
QPushButton:focus, QPushButton:default { border-color: {Accent}; }
QPushButton#EmptyButton { border-color: {Accent}; }
QPushButton:disabled { color: {TextDisabled}; }
QPushButton:default { background: {GridColorSelLostFocus}; }
QPushButton:default:disabled { border-color: {Hairline}; }
QDialog QPushButton { min-width: {button}px; }
QCheckBox { spacing: 8px; color: {Text}; }
QCheckBox::indicator { width: {box}px; height: {box}px; border: 1px solid {TextDisabled};
  border-radius: 3px; background: {TextField}; }
QCheckBox::indicator:hover, QCheckBox::indicator:focus { border-color: {Accent}; }
QCheckBox::indicator:checked { image: url(:/style/check.svg); border-color: {Accent}; }
QDialog QLineEdit { background: {TextField}; color: {Text}; border: 1px solid {Hairline};
  border-radius: 4px; padding: {pad}px 6px; selection-background-color: {GridColorSelGotFocus};
  selection-color: {Text}; }
QDialog QLineEdit:focus { border-color: {Accent}; }
QRadioButton { spacing: 8px; color: {Text}; padding: 1px 0; }
QRadioButton::indicator { width: {box}px; height: {box}px; border: 1px solid {TextDisabled};
  border-radius: {round}px; background: {TextField}; }
QRadioButton::indicator:hover, QRadioButton::indicator:focus { border-color: {Accent}; }
QRadioButton::indicator:checked { border-color: {Accent};
  background: qradialgradient(cx: 0.5, cy: 0.5, radius: 0.5, fx: 0.5, fy: 0.5,
    stop: 0 {Accent}, stop: 0.5 {Accent}, stop: 0.65 {TextField}, stop: 1 {TextField}); }
QRadioButton:disabled, QCheckBox:disabled { color: {TextDisabled}; }
QLabel[second="true"] { color: {TextSecond}; }
QToolButton[warns="true"] { color: {VuMeterColorPeek}; }
QDialog QLineEdit:disabled { color: {TextDisabled}; }
QDialog QListWidget { background: {TextField}; color: {Text}; border: 1px solid {Hairline};
  border-radius: 4px; padding: 2px; }
QDialog QListWidget:focus { border-color: {Accent}; }
QDialog QListWidget:disabled { color: {TextDisabled}; }
QDialog QListWidget::item { padding: {pad}px 4px; border-radius: 3px; }
QDialog QListWidget::item:selected { background: {GridColorSelGotFocus}; color: {Text}; }
QDialog QPlainTextEdit { background: {TextField}; color: {Text}; border: 1px solid {Hairline};
  border-radius: 4px; selection-background-color: {GridColorSelGotFocus};
  selection-color: {Text}; }
QDialog QTextEdit { background: transparent; color: {Text};
  selection-background-color: {GridColorSelGotFocus}; selection-color: {Text}; }
QTabBar { background: transparent; }
QTabBar::tab { background: transparent; color: {TextSecond}; border: none;
  border-bottom: 2px solid transparent; padding: {pad}px 12px; }
QTabBar::tab:hover { color: {Text}; }
QTabBar::tab:selected { color: {Text}; border-bottom-color: {Accent}; }
QTabBar::tab:focus { color: {Accent}; }
QDialog#BenchWindow QComboBox, QDialog#BenchWindow QSpinBox { background: {TextField};
  color: {Text}; border: 1px solid {Hairline}; border-radius: 4px; padding: {pad}px 6px;
  selection-background-color: {GridColorSelGotFocus}; selection-color: {Text}; }
QDialog#BenchWindow QComboBox:focus, QDialog#BenchWindow QSpinBox:focus { border-color: {Accent}; }
QDialog#BenchWindow QComboBox:disabled, QDialog#BenchWindow QSpinBox:disabled {
  color: {TextDisabled}; }
QDialog#BenchWindow QComboBox::drop-down { border: none; width: {line}px; }
QDialog#BenchWindow QComboBox::down-arrow { image: url(:/style/down.svg); width: {arrow}px;
  height: {arrow}px; }
QDialog#BenchWindow QComboBox QLineEdit { border: none; padding: 0; background: transparent; }
QDialog#BenchWindow QScrollArea, QDialog#BenchWindow QScrollArea > QWidget > QWidget {
  background: transparent; }
QDialog#BenchWindow QLineEdit[pending="true"], QDialog#BenchWindow QComboBox[pending="true"] {
  border-color: {Accent}; }
QDialog#SettingsWindow QComboBox, QDialog#SettingsWindow QSpinBox { background: {TextField};
  color: {Text}; border: 1px solid {Hairline}; border-radius: 4px; padding: {pad}px 6px;
  selection-background-color: {GridColorSelGotFocus}; selection-color: {Text}; }
QDialog#SettingsWindow QComboBox:focus, QDialog#SettingsWindow QSpinBox:focus {
  border-color: {Accent}; }
QDialog#SettingsWindow QComboBox::drop-down { border: none; width: {line}px; }
QDialog#SettingsWindow QComboBox::down-arrow { image: url(:/style/down.svg); width: {arrow}px;
  height: {arrow}px; }
QSpinBox::up-button, QSpinBox::down-button { subcontrol-origin: border; border: none;
  width: {line}px; background: transparent; }
QSpinBox::up-button { subcontrol-position: top right; }
QSpinBox::down-button { subcontrol-position: bottom right; }
QSpinBox::up-arrow { image: url(:/style/up.svg); width: {arrow}px; height: {arrow}px; }
QSpinBox::down-arrow { image: url(:/style/down.svg); width: {arrow}px; height: {arrow}px; }
QDialog#SettingsWindow QScrollArea, QDialog#SettingsWindow QScrollArea > QWidget > QWidget {
  background: transparent; }
QWidget#SettingsSide { background: {GridHeadColor}; border-right: 1px solid {Hairline}; }
QListWidget#lstCategories { background: transparent; border: none; padding: 0; }
QListWidget#lstCategories::item { border-radius: 4px; padding: 0 6px; }
QListWidget#lstCategories::item:selected { background: {GridColorSelGotFocus}; color: {Text}; }
QWidget#KeyConflict { border: 1px solid {Hairline}; border-radius: 4px; }
QSlider::groove:horizontal { height: 4px; border-radius: 2px; background: {Hairline}; }
QSlider::sub-page:horizontal { height: 4px; border-radius: 2px; background: {Accent}; }
QSlider::handle:horizontal { width: 14px; margin: -5px 0; border-radius: 7px;
  background: {Text}; }
QSlider::handle:horizontal:focus { background: {Accent}; }
QWidget#BenchChoices QToolButton { border-color: {Hairline}; }
QTableView { background: {GridColor}; border: none; }
QTableView QTableCornerButton::section { background: {GridHeadColor}; border: none; }
QTreeView { background: {GridColor}; border: none; }
QTableView QLineEdit, QTreeView QLineEdit { background: {TextField}; color: {Text}; border: 1px solid {Accent};
  selection-background-color: {GridColorSelGotFocus}; selection-color: {Text}; }
QLabel#EmptyTitle { color: {Text}; }
QWidget[quiet="true"] QLabel#EmptyTitle { color: {TextSecond}; }
QLabel#EmptyText { color: {TextSecond}; }
QScrollBar { background: {GridColor}; border: none; }
QScrollBar:vertical { width: 12px; }
QScrollBar:horizontal { height: 12px; }
QScrollBar::handle { background: {GridColorSelLostFocus}; border: 1px solid {Hairline};
  border-radius: 4px; margin: 2px; }
QScrollBar::handle:vertical { min-height: 32px; }
QScrollBar::handle:horizontal { min-width: 32px; }
QScrollBar::handle:hover { background: {TextDisabled}; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; border: none; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
QAbstractScrollArea::corner { background: {GridColor}; border: none; }
QProgressBar { background: {Hairline}; border: none; border-radius: 3px; max-height: 6px; }
QProgressBar::chunk { background: {Accent}; border-radius: 3px; }
QDialog, QMessageBox { background: {Panel}; }
)";

} // namespace

QString styleSheetFor(const Theme& theme, int lineHeight)
{
    QString sheet = QString::fromUtf16(kSheet);
    for (int index = 0; index < kThemeRoles; ++index) {
        const auto role = static_cast<ThemeRole>(index);
        sheet.replace(u'{' + Theme::nameOf(role) + u'}', theme.colour(role).toText());
    }
    sheet.replace("{line}"_L1, QString::number(lineHeight));
    sheet.replace("{row}"_L1, QString::number(std::max(lineHeight, kMenuIcon)));
    sheet.replace("{box}"_L1, QString::number(lineHeight - 2));
    // Half of the box with its border.
    sheet.replace("{round}"_L1, QString::number(lineHeight / 2));
    sheet.replace("{arrow}"_L1, QString::number(lineHeight - 4));
    sheet.replace("{button}"_L1, QString::number(lineHeight * 4));
    sheet.replace("{field}"_L1, QString::number(lineHeight + 4));
    sheet.replace("{pad}"_L1, QString::number(std::max(3, lineHeight / 4)));
    return sheet;
}

Skin::Skin(QApplication& application, QObject* parent)
    : QObject(parent)
    , m_application(application)
    , m_desktopPalette(application.palette())
    , m_desktopStyle(application.style()->objectName())
    , m_theme(Theme::fromPalette(m_desktopPalette))
{
    application.installEventFilter(this);
    // Every program with a theme is one of the suite.
    application.setWindowIcon(QIcon(u":/suite/melovane.svg"_s));
}

bool Skin::load(const QString& themeText)
{
    const ThemeFile file = readTheme(themeText, Theme::fromPalette(m_desktopPalette));
    if (file.colours == 0) {
        return false;
    }
    if (m_loaded && m_theme == file.theme) {
        return true; // every control would be dressed anew for nothing
    }
    m_theme = file.theme;
    m_loaded = true;
    apply();
    return true;
}

void Skin::clear()
{
    m_theme = Theme::fromPalette(m_desktopPalette);
    m_loaded = false;
    apply();
}

QString Skin::titleOf(const QString& themeText) const
{
    return readTheme(themeText, m_theme).name;
}

void Skin::apply()
{
    const QScopedValueRollback guard(m_applying, true);
    QApplication::setStyle(QStyleFactory::create(m_loaded ? u"Fusion"_s : m_desktopStyle));
    QApplication::setPalette(m_loaded ? m_theme.palette() : m_desktopPalette);
    m_application.setStyleSheet(
        styleSheetFor(m_theme, QFontMetrics(m_application.font()).height()));
    emit changed();
}

bool Skin::eventFilter(QObject* watched, QEvent* event)
{
    // The user changed the colours of the desktop while we follow them.
    if (watched == &m_application && event->type() == QEvent::ApplicationPaletteChange &&
        !m_applying && !m_loaded) {
        m_desktopPalette = QApplication::palette();
        clear();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace melovane
