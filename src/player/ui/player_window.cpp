#include "player/ui/player_window.h"

#include "config/config_objects.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/panel.h"
#include "platform/qt/skin.h"
#include "player/ui/deck_view.h"
#include "player/ui/mix_view.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QPushButton>
#include <QScreen>
#include <QSignalBlocker>
#include <QSlider>
#include <QStyle>
#include <QStyleOptionButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Entries that are shown behind the present one.
constexpr int kUpcoming = 12;
constexpr AirDeck kDecks[] = {AirDeck::A, AirDeck::B};

/// Width that the theme leaves for the text of a button.
int roomOf(const QPushButton& button)
{
    QStyleOptionButton option;
    option.initFrom(&button);
    return button.style()->subElementRect(QStyle::SE_PushButtonContents, &option, &button).width() -
           2;
}

} // namespace

PlayerWindow::PlayerWindow(PlayerDesk& desk,
                           const ConfigObjects& texts,
                           const Skin& skin,
                           const IconSet& icons)
    : m_desk(desk)
    , m_texts(texts)
    , m_icons(icons)
    , m_decks{new DeckView(skin, texts, this), new DeckView(skin, texts, this)}
    , m_mix(new MixView(skin, texts, this))
    , m_commands(new QHBoxLayout)
    , m_upcoming(new QListWidget(this))
    , m_padGrid(new QGridLayout)
    , m_notice(new QLabel(this))
{
    setObjectName(u"PlayerWindow"_s);
    setWindowTitle(texts.text(u"air.title"));
    m_decks[0]->setObjectName(u"deckA"_s);
    m_decks[1]->setObjectName(u"deckB"_s);
    m_mix->setObjectName(u"mixAhead"_s);
    m_notice->setObjectName(u"lblNotice"_s);
    m_notice->setWordWrap(true);
    m_upcoming->setObjectName(u"lstUpcoming"_s);
    m_upcoming->setAccessibleName(texts.text(u"air.upcoming"));
    m_upcoming->setFocusPolicy(Qt::NoFocus);
    m_upcoming->setSelectionMode(QAbstractItemView::NoSelection);
    m_upcoming->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QFont large = m_upcoming->font();
    large.setPointSizeF(large.pointSizeF() * 1.2);
    m_upcoming->setFont(large);
    buildCommands();
    buildJingles();
    layOut();
    refresh();
}

QToolButton* PlayerWindow::addCommand(const QString& text,
                                      const QString& icon,
                                      const std::function<void()>& work)
{
    auto* button = new QToolButton(this);
    button->setObjectName(u"tool."_s + text);
    button->setText(m_texts.text(text));
    if (!icon.isEmpty()) {
        button->setIcon(m_icons.icon(icon));
    }
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setMinimumHeight(fontMetrics().height() * 2);
    button->setFocusPolicy(Qt::TabFocus);
    Panel::tellTool(*button, m_texts.text(text), {}, {});
    if (work) {
        connect(button, &QToolButton::clicked, this, [this, work] {
            work();
            refresh();
        });
    }
    m_commands->addWidget(button);
    return button;
}

QToolButton* PlayerWindow::addSwitch(const QString& text,
                                     const QString& icon,
                                     const std::function<void(bool isOn)>& work)
{
    QToolButton* const button = addCommand(text, icon, {});
    button->setCheckable(true);
    connect(button, &QToolButton::clicked, this, [this, work](bool isOn) {
        work(isOn);
        refresh();
    });
    return button;
}

void PlayerWindow::buildCommands()
{
    m_play = addCommand(u"air.play"_s, u"play"_s, [this] { m_desk.playOrStop(); });
    m_pause = addSwitch(u"air.pause"_s, u"pause"_s, [this](bool) { m_desk.playOrPause(); });
    addCommand(u"air.next"_s, u"fastforward"_s, [this] { m_desk.sequence().next(); });
    addCommand(u"air.mix"_s, u"mix"_s, [this] { m_desk.sequence().mixNow(); });
    m_loop =
        addSwitch(u"air.loop"_s, u"loop"_s, [this](bool isOn) { m_desk.sequence().setLoop(isOn); });
    m_mixMode =
        addSwitch(u"air.mixmode"_s, {}, [this](bool isOn) { m_desk.sequence().setMixMode(isOn); });
    m_talkover = addSwitch(u"air.talkover"_s, {}, [this](bool isOn) { m_desk.setTalkover(isOn); });
    m_commands->addStretch();
    buildPitch();
    m_dock = addSwitch(u"air.dock"_s, u"panel"_s, [this](bool isOn) {
        setDocked(isOn);
        emit dockAsked(m_isDocked);
    });
    m_dock->setToolButtonStyle(Qt::ToolButtonIconOnly);
}

void PlayerWindow::buildPitch()
{
    m_pitch = new QSlider(Qt::Horizontal, this);
    m_pitch->setObjectName(u"sldPitch"_s);
    m_pitch->setAccessibleName(m_texts.text(u"air.pitch"));
    m_pitch->setSingleStep(10);
    m_pitch->setPageStep(100);
    m_pitch->setMinimumWidth(fontMetrics().averageCharWidth() * 16);
    m_pitchText = new QLabel(this);
    m_pitchText->setMinimumWidth(fontMetrics().horizontalAdvance(u"-00,00 %  "_s));
    connect(m_pitch, &QSlider::valueChanged, this, [this](int pitch) {
        m_desk.setPitch(pitch);
        refresh();
    });
    m_commands->addWidget(new QLabel(m_texts.text(u"air.pitch"), this));
    m_commands->addWidget(m_pitch);
    m_commands->addWidget(m_pitchText);
    addCommand(u"air.pitch.zero"_s, {}, [this] { m_desk.easePitch(); });
}

void PlayerWindow::buildJingles()
{
    for (int pad = 0; pad < JinglePads::kPads; ++pad) {
        auto* button = new QPushButton(this);
        button->setObjectName(u"pad%1"_s.arg(pad + 1));
        button->setMinimumHeight(fontMetrics().height() * 2);
        button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        button->setFocusPolicy(Qt::TabFocus);
        button->setCheckable(true); // down as long as it sounds
        connect(button, &QPushButton::clicked, this, [this, pad] {
            m_desk.jingles().play(pad);
            refresh();
        });
        m_padGrid->addWidget(button, pad / 3, pad % 3);
        m_pads.push_back(button);
    }
    auto* stop = new QPushButton(m_texts.text(u"air.jingles.stop"), this);
    stop->setObjectName(u"padStop"_s);
    stop->setFocusPolicy(Qt::TabFocus);
    connect(stop, &QPushButton::clicked, this, [this] { m_desk.jingles().stop(); });
    m_padGrid->addWidget(stop, 2, 0, 1, 3);
}

void PlayerWindow::layOut()
{
    const int gap = fontMetrics().height() / 2;
    auto* decks = new QHBoxLayout;
    decks->addWidget(m_decks[0], 1);
    decks->addWidget(m_decks[1], 1);
    auto* upcoming = new QVBoxLayout;
    upcoming->addWidget(new QLabel(m_texts.text(u"air.upcoming"), this));
    upcoming->addWidget(m_upcoming, 1);
    auto* jingles = new QVBoxLayout;
    jingles->addWidget(new QLabel(m_texts.text(u"air.jingles"), this));
    jingles->addLayout(m_padGrid);
    jingles->addStretch();
    auto* below = new QHBoxLayout;
    below->addLayout(upcoming, 3);
    below->addLayout(jingles, 2);
    for (QLayout* layout : std::initializer_list<QLayout*>{decks, below, m_commands, m_padGrid}) {
        layout->setSpacing(gap);
    }
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(gap, gap, gap, gap);
    column->setSpacing(gap);
    column->addLayout(decks, 3);
    column->addWidget(m_mix);
    column->addLayout(m_commands);
    column->addLayout(below, 2);
    column->addWidget(m_notice);
}

void PlayerWindow::refresh()
{
    for (int index = 0; index < 2; ++index) {
        m_decks[index]->setFace(m_desk.deck(kDecks[index]));
    }
    const bool isPlaying = m_desk.sequence().isPlaying();
    m_mix->setFace(m_desk.mix(), isPlaying);
    m_play->setText(m_texts.text(isPlaying ? u"air.stop" : u"air.play"));
    m_play->setAccessibleName(m_play->text());
    m_play->setIcon(m_icons.icon(isPlaying ? u"stop"_s : u"play"_s));
    m_pause->setChecked(m_desk.sequence().isPaused());
    m_pause->setEnabled(isPlaying || m_desk.sequence().isPaused());
    m_loop->setChecked(m_desk.sequence().isLoop());
    m_loop->setEnabled(isPlaying);
    m_mixMode->setChecked(m_desk.sequence().isMixMode());
    m_talkover->setChecked(m_desk.isTalkover());
    for (size_t pad = 0; pad < m_pads.size(); ++pad) {
        m_pads[pad]->setChecked(m_desk.jingles().sounds(int(pad)));
    }
    showPitch();
    const QString notice = m_desk.notice();
    m_notice->setText(m_hint.isEmpty() ? notice : m_hint);
}

/// The user may change range and direction while the window stands.
void PlayerWindow::showPitch()
{
    const QSignalBlocker quiet(m_pitch);
    m_pitch->setRange(-m_desk.maxPitch(), m_desk.maxPitch());
    m_pitch->setInvertedAppearance(m_desk.isPitchReversed());
    m_pitch->setInvertedControls(m_desk.isPitchReversed());
    m_pitch->setEnabled(m_desk.sequence().isPlaying());
    m_pitch->setValue(m_desk.pitch());
    m_pitchText->setText(m_texts.text(
        u"air.pitch.value",
        QLocale(m_texts.text(u"Sprach.Code")).toString(m_desk.pitch() / 100.0, 'f', 2)));
}

void PlayerWindow::refreshLists()
{
    m_upcoming->clear();
    m_upcoming->addItems(m_desk.upcoming(kUpcoming));
    nameJingles();
}

void PlayerWindow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_padGrid->activate();
    nameJingles();
}

/// A title that is too long for its pad ends with dots.
void PlayerWindow::nameJingles()
{
    const QStringList titles = m_desk.jingles().titles();
    for (size_t pad = 0; pad < m_pads.size(); ++pad) {
        const QString title = titles.value(qsizetype(pad));
        // A title may hold the sign that underlines a letter.
        const QString shown = fontMetrics().elidedText(title, Qt::ElideRight, roomOf(*m_pads[pad]));
        m_pads[pad]->setText(QString(shown).replace(u'&', u"&&"_s));
        m_pads[pad]->setToolTip(title);
        const QString name = m_texts.text(u"air.jingles") + u" %1"_s.arg(pad + 1);
        m_pads[pad]->setAccessibleName(title.isEmpty() ? name : name + u": "_s + title);
        m_pads[pad]->setEnabled(!title.isEmpty());
    }
}

void PlayerWindow::setShape(const QString& file, const SoundShape& shape)
{
    for (DeckView* const deck : m_decks) {
        deck->setShape(file, shape);
    }
}

QString PlayerWindow::shapeless(int deck) const
{
    return m_decks[deck]->hasShape() ? QString() : m_decks[deck]->face().file;
}

void PlayerWindow::setHint(const QString& text)
{
    m_hint = text;
    refresh();
}

void PlayerWindow::setDocked(bool isDocked)
{
    m_dock->setChecked(isDocked);
    if (isDocked == m_isDocked) {
        return;
    }
    m_isDocked = isDocked;
    if (!isDocked) {
        setGeometry(m_before);
        return;
    }
    m_before = geometry();
    setWindowState(windowState() & ~(Qt::WindowMaximized | Qt::WindowMinimized));
    const QRect area = screen()->availableGeometry();
    const QMargins frame(geometry().left() - frameGeometry().left(),
                         geometry().top() - frameGeometry().top(),
                         frameGeometry().right() - geometry().right(),
                         frameGeometry().bottom() - geometry().bottom());
    setGeometry(QRect(area.topLeft(), QSize(area.width(), area.height() / 2)) - frame);
}

void PlayerWindow::bringToFront()
{
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

} // namespace melovane
