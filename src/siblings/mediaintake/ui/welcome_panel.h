#pragma once

#include <QWidget>

#include <functional>
#include <utility>
#include <vector>

class QComboBox;
class QFormLayout;

namespace melovane {

class ConfigObjects;

/// What greets a user whose library is still empty: a sentence, and the choice of language and
/// theme for all programs of the suite, which act at once.
class WelcomePanel : public QWidget
{
    Q_OBJECT

public:
    /// A file and the words that name it.
    using Choice = std::pair<QString, QString>;

    /// What can be chosen, which of it holds now, and what choosing does.
    struct Choices
    {
        std::vector<Choice> entries;
        QString present;
        std::function<void(const QString& file)> choose;
    };

    WelcomePanel(const ConfigObjects& texts,
                 const Choices& languages,
                 const Choices& themes,
                 QWidget* parent = nullptr);

private:
    void
    addBox(QFormLayout& form, const QString& name, const QString& textKey, const Choices& choices);

    const ConfigObjects& m_texts;
};

} // namespace melovane
