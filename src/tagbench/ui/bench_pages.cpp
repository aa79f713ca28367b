#include "tagbench/ui/bench_pages.h"

#include "config/config_objects.h"
#include "tagbench/bench_session.h"
#include "tagbench/name_reader.h"
#include "tagbench/preview.h"
#include "tagbench/ui/preview_page.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

#include <numeric>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr LetterCase kSpellings[] = {LetterCase::EachWord, LetterCase::Sentence, LetterCase::Upper,
                                     LetterCase::Lower};
const QString kSpellingNames[] = {u"words"_s, u"sentence"_s, u"upper"_s, u"lower"_s};

/// Texts whose spelling means something, and which are searched unless one is chosen.
std::vector<TrackField> textFields()
{
    std::vector<TrackField> result;
    for (const TrackField field : benchFields()) {
        if (rowOf(field).edit == TrackEdit::Free) {
            result.push_back(field);
        }
    }
    return result;
}

/// A list of fields to choose one from, or all of them.
QComboBox* fieldChoice(const ConfigObjects& texts, const QString& name, PreviewPage* page)
{
    auto* box = new QComboBox(page);
    box->setObjectName(name);
    box->setAccessibleName(texts.text(u"bench.replace.fields"));
    box->addItem(texts.text(u"bench.replace.allfields"));
    for (const TrackField field : textFields()) {
        box->addItem(texts.text(headingKey(columnOf(field))), int(field));
    }
    QObject::connect(box, &QComboBox::activated, page, &PreviewPage::edited);
    QObject::connect(box, &QComboBox::currentIndexChanged, page, &PreviewPage::refresh);
    return box;
}

std::vector<TrackField> chosenFields(const QComboBox& box)
{
    return box.currentIndex() <= 0 ? textFields()
                                   : std::vector{TrackField(box.currentData().toInt())};
}

QSpinBox* numberBox(const QString& name, int least, int greatest, PreviewPage* page)
{
    auto* box = new QSpinBox(page);
    box->setObjectName(name);
    box->setRange(least, greatest);
    QObject::connect(box, &QSpinBox::valueChanged, page, &PreviewPage::edited);
    return box;
}

void addCaptioned(PreviewPage* page, const QString& caption, QWidget* field)
{
    auto* row = new QHBoxLayout;
    auto* label = new QLabel(caption, page);
    label->setProperty("second", true);
    row->addWidget(label, 1);
    row->addWidget(field, 2);
    page->choices()->addLayout(row);
}

void addMarkers(PreviewPage* page, const ConfigObjects& texts)
{
    auto* markers = new QLabel(texts.text(u"bench.markers"), page);
    markers->setTextFormat(Qt::PlainText);
    markers->setWordWrap(true);
    markers->setProperty("second", true);
    page->choices()->addWidget(markers);
}

} // namespace

BenchPages::BenchPages(const Skin& skin,
                       const IconSet& icons,
                       BenchSession& session,
                       std::function<std::vector<int>()> chosen,
                       QWidget* parent)
    : Panel(skin, parent)
    , m_skin(skin)
    , m_icons(icons)
    , m_session(session)
    , m_chosen(std::move(chosen))
    , m_tabs(new QTabBar(this))
    , m_pages(new QStackedWidget(this))
    , m_summary(new QLabel(this))
{
    setObjectName(u"BenchPages"_s);
    m_tabs->setObjectName(u"TabStrip1"_s);
    m_tabs->setDrawBase(false);
    m_tabs->setExpanding(false);
    m_summary->setObjectName(u"MatchCount"_s);
    m_summary->setTextFormat(Qt::PlainText);
    toolRow()->addWidget(m_tabs, 1);
    toolRow()->addWidget(m_summary);
    toolRow()->addSpacing(8);
    setView(m_pages);
    buildNames();
    buildRenaming();
    buildReplacing();
    buildSpelling();
    connect(m_tabs, &QTabBar::currentChanged, m_pages, &QStackedWidget::setCurrentIndex);
    connect(&session.tracks(), &BenchTracks::changed, this, &BenchPages::refresh);
}

PreviewPage* BenchPages::addPage(const QString& name, bool ticks)
{
    auto* page = new PreviewPage(m_skin, m_icons, m_session, name, ticks, this);
    m_pages->addWidget(page);
    m_tabs->addTab(page->title());
    connect(page, &PreviewPage::refreshed, this,
            [this, page] { m_summary->setText(page->summary()); });
    return page;
}

void BenchPages::buildNames()
{
    const ConfigObjects& texts = m_session.texts();
    PreviewPage* page = addPage(u"names"_s, false);
    QLineEdit* line = page->addLine(u"txtTemplate"_s, texts.text(u"bench.template"));
    page->addSamples(line, {u"%I - %N"_s, u"%TO_%I - %N"_s, u"%I/%A/%TO_%N"_s, u"%N"_s});
    addMarkers(page, texts);
    QCheckBox* blanks =
        page->addBox(u"chkUnderscores"_s, texts.text(u"bench.names.underscores"), true);
    QCheckBox* empty = page->addBox(u"chkEmpty"_s, texts.text(u"bench.names.empty"), false);
    page->finish();
    page->make = [this, line, blanks, empty] {
        return previews::fromNames(m_session.texts(), m_session.tracks(),
                                   NameReader(line->text(), blanks->isChecked()),
                                   empty->isChecked());
    };
    line->setText(u"%I - %N"_s);
}

void BenchPages::buildRenaming()
{
    const ConfigObjects& texts = m_session.texts();
    PreviewPage* page = addPage(u"rename"_s, false);
    QLineEdit* line = page->addLine(u"txtTemplate"_s, texts.text(u"bench.template"));
    page->addSamples(line, {u"%I - %N"_s, u"%A/%TO_%N"_s, u"%I/%A/%TO_%I - %N"_s});
    addMarkers(page, texts);
    m_emptyFolders =
        page->addBox(u"chkEmptyFolders"_s, texts.text(u"bench.rename.empty"), true, false);
    page->finish();
    page->make = [this, line] {
        std::vector<int> all(size_t(m_session.tracks().count()));
        std::iota(all.begin(), all.end(), 0);
        RenamePlan plan(m_session.parts().files, m_session.parts().dataFolder);
        return previews::renaming(m_session.texts(), m_session.tracks(),
                                  plan.rows(m_session.tracks(), all, line->text()));
    };
    line->setText(u"%I - %N"_s);
}

void BenchPages::buildReplacing()
{
    const ConfigObjects& texts = m_session.texts();
    PreviewPage* page = addPage(u"replace"_s, true);
    QLineEdit* find = page->addLine(u"txtFind"_s, texts.text(u"bench.replace.find"));
    QLineEdit* with = page->addLine(u"txtReplace"_s, texts.text(u"bench.replace.with"));
    QComboBox* fields = fieldChoice(texts, u"cmbFields"_s, page);
    addCaptioned(page, texts.text(u"bench.replace.fields"), fields);
    QCheckBox* letters = page->addBox(u"chkCase"_s, texts.text(u"bench.replace.case"), true);
    QCheckBox* words = page->addBox(u"chkWords"_s, texts.text(u"bench.replace.words"), false);
    QCheckBox* pattern = page->addBox(u"chkPattern"_s, texts.text(u"bench.replace.pattern"), false);
    page->finish();
    page->make = [this, find, with, fields, letters, words, pattern] {
        const TextReplacement replacement({.find = find->text(),
                                           .replacement = with->text(),
                                           .matchCase = letters->isChecked(),
                                           .wholeWords = words->isChecked(),
                                           .isPattern = pattern->isChecked()});
        return previews::replacing(m_session.texts(), m_session.tracks(), replacement,
                                   chosenFields(*fields));
    };
}

void BenchPages::buildSpelling()
{
    const ConfigObjects& texts = m_session.texts();
    PreviewPage* page = addPage(u"spelling"_s, true);
    auto* what = new QComboBox(page);
    what->setObjectName(u"cmbWhat"_s);
    what->setAccessibleName(texts.text(u"bench.spelling.what"));
    for (const QString& name : kSpellingNames) {
        what->addItem(texts.text(u"bench.spelling."_s + name));
    }
    what->addItem(texts.text(u"bench.spelling.numbers"));
    const int numbers = what->count() - 1;
    QComboBox* fields = fieldChoice(texts, u"cmbFields"_s, page);
    QSpinBox* first = numberBox(u"numFirst"_s, 1, 9999, page);
    QSpinBox* digits = numberBox(u"numDigits"_s, 1, 4, page);
    first->setAccessibleName(texts.text(u"bench.spelling.first"));
    digits->setAccessibleName(texts.text(u"bench.spelling.digits"));
    addCaptioned(page, texts.text(u"bench.spelling.what"), what);
    addCaptioned(page, texts.text(u"bench.replace.fields"), fields);
    addCaptioned(page, texts.text(u"bench.spelling.first"), first);
    addCaptioned(page, texts.text(u"bench.spelling.digits"), digits);
    QCheckBox* total = page->addBox(u"chkTotal"_s, texts.text(u"bench.spelling.total"), false);
    page->finish();
    const auto enable = [=](int index) {
        fields->setEnabled(index != numbers);
        first->setEnabled(index == numbers);
        digits->setEnabled(index == numbers);
        total->setEnabled(index == numbers);
        page->refresh();
    };
    connect(what, &QComboBox::currentIndexChanged, page, enable);
    connect(what, &QComboBox::activated, page, &PreviewPage::edited);
    enable(0);
    page->make = [=, this] {
        if (what->currentIndex() == numbers) {
            return previews::numbering(m_session.texts(), m_session.tracks(), chosenOrAll(),
                                       {.first = first->value(),
                                        .digits = digits->value(),
                                        .withTotal = total->isChecked()});
        }
        return previews::spelling(m_session.texts(), m_session.tracks(), chosenOrAll(),
                                  kSpellings[what->currentIndex()], chosenFields(*fields));
    };
}

std::vector<int> BenchPages::chosenOrAll() const
{
    std::vector<int> result = m_chosen();
    if (result.size() < 2) {
        result.resize(size_t(m_session.tracks().count()));
        std::iota(result.begin(), result.end(), 0);
    }
    return result;
}

void BenchPages::refresh()
{
    static_cast<PreviewPage*>(m_pages->currentWidget())->refresh();
}

bool BenchPages::removesEmptyFolders() const
{
    return m_emptyFolders->isChecked();
}

} // namespace melovane
