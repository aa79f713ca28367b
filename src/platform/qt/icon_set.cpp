#include "platform/qt/icon_set.h"

#include "platform/qt/skin.h"

#include <QDir>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

ThemeRole roleOf(QIcon::Mode mode, QIcon::State state, ThemeRole normal)
{
    if (mode == QIcon::Disabled) {
        return ThemeRole::TextDisabled;
    }
    return state == QIcon::On ? ThemeRole::Accent : normal;
}

class LineIconEngine : public QIconEngine
{
public:
    LineIconEngine(QString name, QByteArray svg, ThemeRole role, const Skin& skin)
        : m_name(std::move(name))
        , m_svg(std::move(svg))
        , m_role(role)
        , m_skin(skin)
    {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override
    {
        QByteArray coloured = m_svg;
        coloured.replace("currentColor",
                         m_skin.theme().colour(roleOf(mode, state, m_role)).toText().toLatin1());
        QSvgRenderer(coloured).render(painter, rect);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        const QString colour = m_skin.theme().colour(roleOf(mode, state, m_role)).toText();
        const QString key =
            u"mlv-icon-%1-%2-%3x%4"_s.arg(m_name, colour).arg(size.width()).arg(size.height());
        QPixmap result;
        if (!QPixmapCache::find(key, &result)) {
            result = QPixmap(size);
            result.fill(Qt::transparent);
            QPainter painter(&result);
            paint(&painter, QRect(QPoint(), size), mode, state);
            painter.end();
            QPixmapCache::insert(key, result);
        }
        return result;
    }

    [[nodiscard]] QIconEngine* clone() const override
    {
        return new LineIconEngine(m_name, m_svg, m_role, m_skin);
    }

    bool isNull() override { return false; }

private:
    QString m_name;
    QByteArray m_svg;
    ThemeRole m_role;
    const Skin& m_skin;
};

} // namespace

IconSet::IconSet(const Skin& skin)
    : m_skin(skin)
{}

QIcon IconSet::icon(const QString& name, ThemeRole role) const
{
    QFile file(u":/icons/%1.svg"_s.arg(name));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    return QIcon(new LineIconEngine(name, file.readAll(), role, m_skin));
}

QStringList IconSet::names()
{
    QStringList result;
    for (const QString& file :
         QDir(u":/icons"_s).entryList({u"*.svg"_s}, QDir::Files, QDir::Name)) {
        result.append(file.chopped(4));
    }
    return result;
}

} // namespace melovane
