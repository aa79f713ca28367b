#include "tagbench/ui/cover_row.h"

#include "config/config_objects.h"
#include "config/counted_text.h"
#include "platform/qt/icon_set.h"
#include "platform/system/clock.h"
#include "platform/system/files.h"
#include "tagbench/bench_session.h"
#include "trackedit/cover_files.h"
#include "trackedit/cover_settings.h"

#include <QBuffer>
#include <QDragEnterEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QMimeData>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QToolButton>
#include <QUrl>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Side of the picture in lines of text.
constexpr int kLines = 5;

/// Of the sheets behind a picture that stands for several, in pixels.
constexpr int kSheet = 4;
constexpr int kSheets = 2;

QString droppedFile(const QMimeData& data)
{
    const QList<QUrl> urls = data.urls();
    return urls.isEmpty() ? QString() : urls.first().toLocalFile();
}

} // namespace

CoverRow::CoverRow(const IconSet& icons, BenchSession& session, QWidget* parent)
    : QWidget(parent)
    , m_icons(icons)
    , m_session(session)
    , m_picture(new QLabel(this))
    , m_text(new QLabel(this))
    , m_size(new QLabel(this))
    , m_choose(new QPushButton(session.texts().text(u"bench.cover.choose"), this))
    , m_remove(new QPushButton(session.texts().text(u"bench.cover.off"), this))
    , m_revert(new QToolButton(this))
{
    const ConfigObjects& texts = session.texts();
    setObjectName(u"CoverRow"_s);
    setAcceptDrops(true);
    const int side = fontMetrics().lineSpacing() * kLines + kSheet * kSheets;
    m_picture->setObjectName(u"ImageX1"_s);
    m_picture->setAccessibleName(texts.text(u"bench.cover"));
    m_picture->setFixedSize(side, side);
    m_text->setObjectName(u"lblCover"_s);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_size->setTextFormat(Qt::PlainText);
    m_size->setProperty("second", true);
    m_choose->setObjectName(u"cmdCover"_s);
    m_choose->setToolTip(texts.text(u"bench.cover.choose.tip"));
    m_remove->setObjectName(u"cmdCoverOff"_s);
    m_remove->setToolTip(texts.text(u"bench.cover.off.tip"));
    m_revert->setObjectName(u"cmdCoverBack"_s);
    m_revert->setAutoRaise(true);
    m_revert->setIcon(icons.icon(u"undo"_s, ThemeRole::Accent));
    m_revert->setToolTip(texts.text(u"bench.revert"));
    m_revert->setAccessibleName(m_revert->toolTip());
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {m_choose, m_remove}) {
        button->setAutoDefault(false);
        buttons->addWidget(button);
    }
    buttons->addStretch(1);
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(14, 12, 14, 0);
    grid->setColumnStretch(1, 1);
    grid->setHorizontalSpacing(14);
    grid->addWidget(m_picture, 0, 0, 3, 1, Qt::AlignTop);
    grid->addWidget(m_text, 0, 1);
    grid->addWidget(m_revert, 0, 2, Qt::AlignTop);
    grid->addWidget(m_size, 1, 1, 1, 2);
    grid->addLayout(buttons, 2, 1, 1, 2);
    connect(m_choose, &QPushButton::clicked, this, &CoverRow::choose);
    connect(m_remove, &QPushButton::clicked, this,
            [this] { m_session.covers().takeOff(m_chosen); });
    connect(m_revert, &QToolButton::clicked, this,
            [this] { m_session.tracks().revert(m_chosen, kBenchCover); });
    connect(&session.tracks(), &BenchTracks::changed, this, &CoverRow::ask);
    ask();
}

void CoverRow::setChosen(const std::vector<int>& tracks)
{
    m_chosen = tracks;
    ask();
}

/// Asks for the covers unless they are those that are shown.
void CoverRow::ask()
{
    BenchTracks& tracks = m_session.tracks();
    std::erase_if(m_chosen, [&](int track) { return track >= tracks.count(); });
    bool isChanged = false;
    std::vector<QString> covers;
    for (const int track : m_chosen) {
        covers.push_back(QString::number(track) + u' ' + tracks.text(track, kBenchCover));
        isChanged = isChanged || tracks.isChanged(track, kBenchCover);
    }
    const CoverSettings settings = CoverSettings::of(m_session.parts().settings);
    m_size->setText(
        m_session.texts().text(u"bench.cover.size"_s, settings.mostWidth, settings.quality));
    m_size->setVisible(!m_chosen.empty());
    m_choose->setEnabled(!m_chosen.empty());
    m_revert->setVisible(isChanged);
    if (covers != m_asked || m_chosen.empty()) {
        m_asked = std::move(covers);
        m_session.covers().show(m_chosen, [self = QPointer(this)](const BenchCovers::Shown& shown) {
            if (self) {
                self->show(shown);
            }
        });
    }
}

void CoverRow::show(const BenchCovers::Shown& shown)
{
    m_text->setText(text(shown));
    QPixmap picture;
    picture.loadFromData(shown.picture);
    m_picture->setPixmap(stacked(picture, shown.pictures > 1));
    m_remove->setEnabled(shown.pictures > 0);
}

QString CoverRow::text(const BenchCovers::Shown& shown) const
{
    const ConfigObjects& texts = m_session.texts();
    if (shown.pictures == 0) {
        return texts.text(u"bench.cover.none");
    }
    QString result = countedText(texts, u"bench.cover.several"_s, shown.pictures);
    if (shown.pictures == 1) {
        result = texts.text(u"bench.cover.one");
    }
    if (shown.without > 0) {
        result += u", "_s + countedText(texts, u"bench.cover.without"_s, shown.without);
    }
    return result;
}

/// The picture in its square, on two more sheets when it stands for several.
QPixmap CoverRow::stacked(const QPixmap& picture, bool isStack) const
{
    const qreal ratio = devicePixelRatioF();
    QPixmap result(m_picture->size() * ratio);
    result.setDevicePixelRatio(ratio);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    const int side = m_picture->width() - kSheet * kSheets - 1;
    const QColor line = palette().color(QPalette::Mid);
    for (int sheet = isStack ? kSheets : 0; sheet >= 0; --sheet) {
        const QRect place(sheet * kSheet, (kSheets - sheet) * kSheet, side, side);
        painter.fillRect(place, palette().color(QPalette::Base));
        if (sheet == 0 && !picture.isNull()) {
            const QSize size = picture.size().scaled(place.size(), Qt::KeepAspectRatio);
            QRect target(QPoint(), size);
            target.moveCenter(place.center());
            painter.setRenderHint(QPainter::SmoothPixmapTransform);
            painter.drawPixmap(target, picture);
        } else if (sheet == 0) {
            m_icons.icon(u"sleeve.viewer"_s)
                .paint(&painter, place.adjusted(side / 3, side / 3, -side / 3, -side / 3));
        }
        painter.setPen(line);
        painter.drawRect(place);
    }
    return result;
}

void CoverRow::choose()
{
    const QString file = choosePicture(CoverSettings::of(m_session.parts().settings).folder);
    if (!file.isEmpty()) {
        CoverSettings::keepFolderOf(m_session.parts().settings, file);
        takeFile(file);
    }
}

void CoverRow::takeFile(const QString& file)
{
    const auto facts = m_session.parts().files.facts(file);
    take(pictureBytes(m_session.parts().files, file), facts ? facts->modified : QDateTime());
}

void CoverRow::take(const QByteArray& picture, const QDateTime& date)
{
    const CoverSettings settings = CoverSettings::of(m_session.parts().settings);
    m_session.covers().choose(
        picture, date.isValid() ? date : m_session.parts().clock.now(),
        {settings.mostWidth, settings.quality}, m_chosen, [self = QPointer(this)](bool isRead) {
            if (self && !isRead) {
                emit self->failed(self->m_session.texts().text(u"bench.cover.unreadable"));
            }
        });
}

void CoverRow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!m_chosen.empty() &&
        (!droppedFile(*event->mimeData()).isEmpty() || event->mimeData()->hasImage())) {
        event->acceptProposedAction();
    }
}

void CoverRow::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    if (const QString file = droppedFile(*event->mimeData()); !file.isEmpty()) {
        takeFile(file);
        return;
    }
    QBuffer bytes;
    event->mimeData()->imageData().value<QImage>().save(&bytes, "PNG");
    take(bytes.data(), {});
}

} // namespace melovane
