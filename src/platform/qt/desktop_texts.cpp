#include "platform/qt/desktop_texts.h"

#include <QApplication>
#include <QKeySequence>
#include <QLibraryInfo>
#include <QTranslator>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kName = u"DesktopTexts"_s;

} // namespace

void setLanguageOfDesktopTexts(QApplication& application, const QString& code)
{
    delete application.findChild<QTranslator*>(kName, Qt::FindDirectChildrenOnly);
    auto* texts = new QTranslator(&application);
    texts->setObjectName(kName);
    if (texts->load(u"qtbase_"_s + code, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QApplication::installTranslator(texts);
    }
}

QString nativeKeys(const QString& portable)
{
    return QKeySequence(portable, QKeySequence::PortableText).toString(QKeySequence::NativeText);
}

} // namespace melovane
