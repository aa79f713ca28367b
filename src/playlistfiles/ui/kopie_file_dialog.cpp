#include "playlistfiles/ui/kopie_file_dialog.h"

#include "config/config_objects.h"
#include "platform/qt/file_dialogs.h"
#include "platform/qt/icon_set.h"

#include <QButtonGroup>
#include <QCloseEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Width of the fields in letters, least heights in lines.
constexpr int kWidth = 96;
constexpr int kLogLines = 3;
constexpr int kTemplateLines = 4;

/// What the window manager puts around a dialog, and a little of what lies below, in lines.
constexpr int kAround = 3;

/// Options of file names and of folders.
constexpr int kFileOptions = 3;
constexpr int kFolderOptions = 4;

QLabel* makeLabel(QWidget& parent, const QString& name, const QString& text = {})
{
    auto* label = new QLabel(text, &parent);
    label->setObjectName(name);
    // Names of lists and tracks may look like markup.
    label->setTextFormat(Qt::PlainText);
    return label;
}

/// A text that explains, in the second colour.
QLabel* makeNote(QWidget& parent, const QString& name, const QString& text = {})
{
    QLabel* label = makeLabel(parent, name, text);
    label->setProperty("second", true);
    return label;
}

QLabel* makeHeading(QWidget& parent, const QString& text)
{
    QLabel* label = makeLabel(parent, {}, text);
    QFont font = label->font();
    font.setWeight(QFont::DemiBold);
    label->setFont(font);
    return label;
}

/// Breaks a text into lines and keeps their room free. Left to the label, no list beside it could
/// become smaller: layouts take the height that depends on a width for the least one.
void setWrapped(QLabel& label, const QString& text)
{
    label.setText(text);
    label.setWordWrap(true);
    QSizePolicy policy = label.sizePolicy();
    policy.setHeightForWidth(false);
    label.setSizePolicy(policy);
    const int least = label.fontMetrics().averageCharWidth() * kWidth;
    label.setMinimumHeight(label.heightForWidth(std::max(label.width(), least)));
}

/// A text that does not fit keeps both ends; the whole one stands in the tool tip.
void setElided(QLabel& label, const QString& text)
{
    label.setText(label.fontMetrics().elidedText(text, Qt::ElideMiddle, label.width()));
    label.setToolTip(label.text() == text ? QString() : text.toHtmlEscaped());
}

void check(QButtonGroup& group, std::optional<int> option)
{
    // None may be chosen: an exclusive group would keep its last one.
    group.setExclusive(false);
    for (QAbstractButton* button : group.buttons()) {
        button->setChecked(option && group.id(button) == *option);
    }
    group.setExclusive(true);
}

} // namespace

// ---- the window

KopieFileWindow::KopieFileWindow(frmKopieFile& logic, const ConfigObjects& texts)
    : DialogFrame(u"frmKopieFile"_s)
    , subject(makeLabel(*this, u"sklInfo"_s))
    , folder(new QLineEdit(this))
    , folderNote(makeNote(*this, u"sklOrdner"_s))
    , cmdDir(new QPushButton(texts.text(u"export.folder.choose"), this))
    , text1(new QLineEdit(this))
    , preview(makeNote(*this, u"sklBeispiel"_s))
    , list1(new QListWidget(this))
    , fileOptions(new QButtonGroup(this))
    , folderOptions(new QButtonGroup(this))
    , progressBar(new QProgressBar(this))
    , outcomePicture(makeLabel(*this, {}))
    , outcome(makeLabel(*this, u"sklErgebnis"_s))
    , txProgress(new QPlainTextEdit(this))
    , cmdStart(addCommand(u"cmdStart"_s, texts.text(u"export.start")))
    , cmdAbbruch(addCommand(u"cmdAbbruch"_s, texts.text(u"schliessen")))
    , m_logic(logic)
{
    setWindowTitle(texts.text(u"mnuAktivePlaystFiles").remove(u" ..."_s));
    column()->addWidget(subject);
    column()->addSpacing(fontMetrics().height() / 2);
    column()->addLayout(makeFields(texts));
    column()->addSpacing(fontMetrics().height() / 2);
    column()->addLayout(makeChoices(texts));
    column()->addSpacing(fontMetrics().height() / 2);
    column()->addLayout(makeProgress(texts), 1);
    setKeys(cmdStart, cmdAbbruch);
    // A small screen shows less of the lists, a large window more of the log.
    layout()->setSizeConstraint(QLayout::SetNoConstraint);
    static_cast<QBoxLayout*>(layout())->setStretchFactor(column(), 1);
    connectLogic();
}

QLayout* KopieFileWindow::makeFields(const ConfigObjects& texts)
{
    folder->setObjectName(u"txtDir"_s);
    text1->setObjectName(u"Text1"_s);
    cmdDir->setObjectName(u"cmdDir"_s);
    cmdDir->setAutoDefault(false);
    auto* folderLabel = makeLabel(*this, {}, texts.text(u"export.folder"));
    folderLabel->setBuddy(folder);
    folder->setAccessibleName(folderLabel->text());
    auto* textLabel = makeLabel(*this, {}, texts.text(u"export.template"));
    textLabel->setBuddy(text1);
    text1->setAccessibleName(textLabel->text());
    preview->setMinimumWidth(fontMetrics().averageCharWidth() * kWidth / 2);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(fontMetrics().height());
    grid->setVerticalSpacing(fontMetrics().height() / 3);
    grid->addWidget(folderLabel, 0, 0);
    grid->addWidget(folder, 0, 1);
    grid->addWidget(cmdDir, 0, 2);
    grid->addWidget(folderNote, 1, 1, 1, 2);
    grid->setRowMinimumHeight(2, fontMetrics().height() / 3);
    grid->addWidget(textLabel, 3, 0);
    grid->addWidget(text1, 3, 1, 1, 2);
    grid->addWidget(preview, 4, 1, 1, 2);
    grid->setColumnStretch(1, 1);
    return grid;
}

QLayout* KopieFileWindow::makeOptions(const ConfigObjects& texts,
                                      const QString& frame,
                                      QButtonGroup& group,
                                      int count)
{
    const QString name = frame == "frExpFile"_L1 ? u"opExpFile"_s : u"opExpDir"_s;
    auto* options = new QVBoxLayout;
    options->setSpacing(fontMetrics().height() / 3);
    options->addWidget(makeHeading(*this, texts.text(frame)));
    for (int index = 0; index < count; ++index) {
        const QString key = u"%1_%2"_s.arg(name).arg(index);
        auto* button = new QRadioButton(texts.text(key), this);
        button->setObjectName(key);
        group.addButton(button, index);
        options->addWidget(button);
    }
    options->addStretch();
    return options;
}

QLayout* KopieFileWindow::makeChoices(const ConfigObjects& texts)
{
    list1->setObjectName(u"List1"_s);
    list1->setAccessibleName(texts.text(u"export.templates"));
    list1->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QLabel* markers = makeNote(*this, u"sklMarken"_s);
    setWrapped(*markers, texts.text(u"export.markers"));
    auto* templates = new QVBoxLayout;
    templates->setSpacing(fontMetrics().height() / 3);
    templates->addWidget(makeHeading(*this, texts.text(u"export.templates")));
    templates->addWidget(list1);
    auto* row = new QHBoxLayout;
    row->setSpacing(fontMetrics().height() * 2);
    row->addLayout(templates, 1);
    row->addLayout(makeOptions(texts, u"frExpFile"_s, *fileOptions, kFileOptions));
    row->addLayout(makeOptions(texts, u"frExpNewDir"_s, *folderOptions, kFolderOptions));
    auto* all = new QVBoxLayout;
    all->setSpacing(fontMetrics().height() / 2);
    all->addLayout(row);
    all->addWidget(markers);
    return all;
}

QLayout* KopieFileWindow::makeProgress(const ConfigObjects& texts)
{
    progressBar->setObjectName(u"ProgressBar1"_s);
    progressBar->setAccessibleName(texts.text(u"export.log"));
    progressBar->setTextVisible(false);
    progressBar->setRange(0, 1);
    setWrapped(*outcome, u" "_s); // so that nothing moves when it speaks
    outcomePicture->hide();
    txProgress->setObjectName(u"txProgress"_s);
    txProgress->setAccessibleName(texts.text(u"export.log"));
    txProgress->setReadOnly(true);
    txProgress->setTabChangesFocus(true);
    txProgress->setLineWrapMode(QPlainTextEdit::NoWrap);
    txProgress->setMinimumHeight(fontMetrics().lineSpacing() * (kLogLines + 1));
    txProgress->setMinimumWidth(fontMetrics().averageCharWidth() * kWidth);
    auto* result = new QHBoxLayout;
    result->addWidget(outcomePicture);
    result->addWidget(outcome, 1);
    auto* progress = new QVBoxLayout;
    progress->setSpacing(fontMetrics().height() / 2);
    progress->addWidget(progressBar);
    progress->addLayout(result);
    progress->addWidget(txProgress, 1);
    return progress;
}

void KopieFileWindow::connectLogic()
{
    connect(folder, &QLineEdit::textEdited, this,
            [this](const QString& text) { m_logic.folderTyped(text); });
    connect(text1, &QLineEdit::textEdited, this,
            [this](const QString& text) { m_logic.templateTyped(text); });
    connect(list1, &QListWidget::currentRowChanged, this,
            [this](int row) { m_logic.templateChosen(row); });
    connect(list1, &QListWidget::itemClicked, this,
            [this] { m_logic.templateChosen(list1->currentRow()); });
    connect(fileOptions, &QButtonGroup::idClicked, this,
            [this](int option) { m_logic.fileOptionChosen(option); });
    connect(folderOptions, &QButtonGroup::idClicked, this,
            [this](int option) { m_logic.folderOptionChosen(option); });
    connect(cmdDir, &QPushButton::clicked, this, [this] { m_logic.cmdDir(); });
    connect(cmdStart, &QPushButton::clicked, this, [this] { m_logic.cmdStart(); });
    connect(cmdAbbruch, &QPushButton::clicked, this, [this] { m_logic.cmdAbbruch(); });
}

void KopieFileWindow::showEvent(QShowEvent* event)
{
    DialogFrame::showEvent(event);
    layout()->invalidate(); // the theme has given its controls their paddings by now
    const int around = fontMetrics().height() * kAround;
    setMinimumSize(layout()->totalMinimumSize());
    resize(sizeHint().boundedTo(screen()->availableSize() - QSize(0, around)));
}

void KopieFileWindow::reject()
{
    m_logic.cmdAbbruch();
}

void KopieFileWindow::closeEvent(QCloseEvent* event)
{
    if (m_logic.mayClose()) {
        done(Rejected);
    } else {
        event->ignore();
    }
}

// ---- the form

KopieFileDialog::KopieFileDialog(const IconSet& icons, const ConfigObjects& texts)
    : m_icons(icons)
    , m_texts(texts)
{}

void KopieFileDialog::open(frmKopieFile& logic)
{
    m_window = std::make_unique<KopieFileWindow>(logic, m_texts);
}

void KopieFileDialog::run()
{
    m_window->folder->setFocus();
    m_window->exec();
    m_window.reset();
}

void KopieFileDialog::close()
{
    m_window->done(QDialog::Rejected);
}

void KopieFileDialog::setSubject(const QString& sentence)
{
    setWrapped(*m_window->subject, sentence);
}

void KopieFileDialog::setTemplates(const QStringList& offered)
{
    const QSignalBlocker quiet(m_window->list1);
    m_window->list1->addItems(offered);
    m_window->list1->setMinimumHeight(m_window->list1->sizeHintForRow(0) * kTemplateLines +
                                      2 * m_window->list1->frameWidth());
}

void KopieFileDialog::setFolder(const QString& folder)
{
    m_window->folder->setText(folder);
}

void KopieFileDialog::setFolderNote(const QString& note, bool isGood)
{
    // Never without text, so that nothing below moves.
    m_window->folderNote->setText(note.isEmpty() ? u" "_s : note);
    QFont font = m_window->folderNote->font();
    font.setWeight(isGood ? QFont::Normal : QFont::DemiBold);
    m_window->folderNote->setFont(font);
}

void KopieFileDialog::setTemplate(const QString& text)
{
    if (m_window->text1->text() != text) {
        const int place = m_window->text1->cursorPosition();
        const qsizetype dropped = m_window->text1->text().size() - text.size();
        m_window->text1->setText(text);
        m_window->text1->setCursorPosition(place - int(dropped));
    }
    const QSignalBlocker quiet(m_window->list1);
    const auto found = m_window->list1->findItems(text, Qt::MatchFixedString);
    m_window->list1->setCurrentItem(found.isEmpty() ? nullptr : found.first());
}

void KopieFileDialog::setPreview(const QString& text)
{
    setElided(*m_window->preview, m_texts.text(u"export.preview", text));
}

void KopieFileDialog::setOptions(std::optional<int> file, std::optional<int> folders)
{
    check(*m_window->fileOptions, file);
    check(*m_window->folderOptions, folders);
}

void KopieFileDialog::setRunning(bool running)
{
    for (QWidget* control :
         std::initializer_list<QWidget*>{m_window->folder, m_window->cmdDir, m_window->text1,
                                         m_window->list1, m_window->cmdStart}) {
        control->setEnabled(!running);
    }
    for (const QButtonGroup* group : {m_window->fileOptions, m_window->folderOptions}) {
        for (QAbstractButton* button : group->buttons()) {
            button->setEnabled(!running);
        }
    }
    m_window->cmdAbbruch->setText(m_texts.text(running ? u"Abbruch"_s : u"schliessen"_s));
    QProgressBar& bar = *m_window->progressBar;
    if (running) {
        // Without a range it moves by itself: the files are being looked for.
        bar.setRange(0, 0);
    } else {
        bar.setMaximum(std::max(1, bar.maximum()));
        m_window->cmdAbbruch->setFocus();
    }
}

void KopieFileDialog::setProgress(qint64 position, qint64 count)
{
    m_window->progressBar->setRange(0, int(count));
    m_window->progressBar->setValue(int(position));
}

void KopieFileDialog::setLog(const QString& text)
{
    m_window->txProgress->setPlainText(QString(text).remove(u'\r').chopped(text.isEmpty() ? 0 : 1));
    m_window->txProgress->moveCursor(QTextCursor::End);
    m_window->txProgress->moveCursor(QTextCursor::StartOfLine);
}

void KopieFileDialog::appendLog(const QString& line)
{
    m_window->txProgress->appendPlainText(line);
}

void KopieFileDialog::setOutcome(const QString& text, bool isGood)
{
    const int side = m_window->fontMetrics().height();
    m_window->outcomePicture->setVisible(!text.isEmpty());
    m_window->outcomePicture->setPixmap(
        m_icons.icon(isGood ? u"ticked"_s : u"info"_s, ThemeRole::Accent).pixmap(side, side));
    setWrapped(*m_window->outcome, text.isEmpty() ? u" "_s : text);
}

std::optional<QString> KopieFileDialog::chooseFolder(const QString& present)
{
    const QString chosen = askFolder(m_window.get(), m_texts.text(u"export.folder"), present);
    return chosen.isEmpty() ? std::nullopt : std::optional(chosen);
}

} // namespace melovane
