#include "siblings/mediaintake/ui/welcome_panel.h"

#include "config/config_objects.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

WelcomePanel::WelcomePanel(const ConfigObjects& texts,
                           const Choices& languages,
                           const Choices& themes,
                           QWidget* parent)
    : QWidget(parent)
    , m_texts(texts)
{
    setObjectName(u"WelcomePanel"_s);
    auto* const title = new QLabel(texts.text(u"intake.welcome"), this);
    title->setObjectName(u"lblWelcome"_s);
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    title->setFont(large);
    auto* const words = new QLabel(texts.text(u"intake.welcome.text"), this);
    words->setObjectName(u"lblWelcomeText"_s);
    words->setWordWrap(true);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(title);
    column->addWidget(words);
    auto* const form = new QFormLayout;
    addBox(*form, u"cmbLanguage"_s, u"intake.language"_s, languages);
    addBox(*form, u"cmbTheme"_s, u"intake.theme"_s, themes);
    column->addLayout(form);
}

void WelcomePanel::addBox(QFormLayout& form,
                          const QString& name,
                          const QString& textKey,
                          const Choices& choices)
{
    auto* const box = new QComboBox(this);
    box->setObjectName(name);
    box->setAccessibleName(m_texts.text(textKey));
    box->setToolTip(m_texts.text(textKey + u".tip"_s));
    for (const auto& [file, words] : choices.entries) {
        box->addItem(words, file);
    }
    box->setCurrentIndex(std::max(0, box->findData(choices.present)));
    form.addRow(m_texts.text(textKey), box);
    connect(box, &QComboBox::activated, this,
            [box, choose = choices.choose](int index) { choose(box->itemData(index).toString()); });
}

} // namespace melovane
