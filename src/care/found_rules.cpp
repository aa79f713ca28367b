#include "care/found_rules.h"

#include "care/found_matches.h"
#include "platform/db/text_compare.h"
#include "platform/system/path_text.h"

#include <QHash>

#include <algorithm>
#include <map>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Components put together again, in the separators of the folder that they come from.
QString folderOf(const QString& model, const QStringList& components)
{
    const QChar separator = path::separatorOf(model);
    QString folder;
    for (const QString& component : components) {
        folder += component;
        if (!path::isSeparator(folder.back())) {
            folder += separator;
        }
    }
    return folder;
}

qsizetype commonFront(const QStringList& one, const QStringList& other)
{
    qsizetype count = 0;
    while (count < one.size() && count < other.size() &&
           textcompare::equal(one[count], other[count])) {
        ++count;
    }
    return count;
}

/// Tracks whose folders moved by the same pair of folders.
struct Group
{
    FolderPair base;
    QStringList front; ///< what the rests of all have in common
    std::vector<FoundTrack> tracks;
};

void add(Group& group, const FolderPair& pair, FoundTrack track)
{
    if (group.tracks.empty()) {
        group.base = pair;
        group.front = pair.rest;
    } else {
        group.front.resize(commonFront(group.front, pair.rest));
    }
    group.tracks.push_back(std::move(track));
}

FoundRule ruleOf(Group& group)
{
    FoundRule rule;
    const auto below = [&](const QString& folder) {
        return folderOf(folder, path::components(folder) + group.front);
    };
    rule.oldFolder = below(group.base.oldFolder);
    rule.newFolder = below(group.base.newFolder);
    rule.tracks = std::move(group.tracks);
    rule.isChosen = rule.chosenCount() > 0;
    return rule;
}

/// Rules by their old folders, so that the one nearest above a folder is found at once.
class RulesAbove
{
public:
    explicit RulesAbove(const std::vector<FoundRule>& rules)
    {
        for (size_t i = 0; i < rules.size(); ++i) {
            m_rules.insert(textcompare::fold(path::toSystem(rules[i].oldFolder)), i);
        }
    }

    [[nodiscard]] std::optional<size_t> of(const QString& folder) const
    {
        QString key = textcompare::fold(path::toSystem(folder));
        while (!key.isEmpty()) {
            if (const auto rule = m_rules.constFind(key); rule != m_rules.cend()) {
                return *rule;
            }
            key.chop(1);
            key.truncate(key.lastIndexOf(path::kSeparator) + 1);
        }
        return std::nullopt;
    }

private:
    QHash<QString, size_t> m_rules;
};

bool isFurtherUp(const FoundRule& one, const FoundRule& other)
{
    if (one.newFolder.isEmpty() != other.newFolder.isEmpty()) {
        return other.newFolder.isEmpty();
    }
    return textcompare::compare(one.oldFolder, other.oldFolder) < 0;
}

} // namespace

int FoundRule::foundCount() const
{
    return int(std::count_if(tracks.begin(), tracks.end(),
                             [](const FoundTrack& track) { return track.isFound(); }));
}

int FoundRule::chosenCount() const
{
    return int(std::count_if(tracks.begin(), tracks.end(), [](const FoundTrack& track) {
        return track.isFound() && track.isChosen;
    }));
}

FolderPair FolderPair::of(const QString& oldFolder, const QString& newFolder)
{
    QStringList before = path::components(oldFolder);
    QStringList after = path::components(newFolder);
    FolderPair pair;
    while (before.size() > 1 && after.size() > 1 &&
           textcompare::equal(before.back(), after.back())) {
        pair.rest.prepend(after.takeLast());
        before.removeLast();
    }
    pair.oldFolder = folderOf(oldFolder, before);
    pair.newFolder = folderOf(newFolder, after);
    return pair;
}

std::vector<FoundRule> findRules(const FoundInput& input)
{
    std::vector<FoundTrack> matches = FoundMatches(input).run();
    std::map<std::pair<QString, QString>, Group> groups;
    for (FoundTrack& match : matches) {
        if (match.isFound()) {
            const FolderPair pair =
                FolderPair::of(input.tracks[size_t(match.track)].folder, match.folder);
            add(groups[{textcompare::fold(pair.oldFolder), pair.newFolder}], pair, match);
        }
    }
    std::vector<FoundRule> rules;
    rules.reserve(groups.size());
    for (auto& [base, group] : groups) {
        rules.push_back(ruleOf(group));
    }
    // The rule with most files comes to stand under a folder that two of them lead away from.
    std::stable_sort(rules.begin(), rules.end(), [](const FoundRule& one, const FoundRule& other) {
        return one.tracks.size() < other.tracks.size();
    });
    const RulesAbove above(rules);
    std::map<QString, FoundRule> lost;
    for (FoundTrack& match : matches) {
        if (match.isFound()) {
            continue;
        }
        const QString& folder = input.tracks[size_t(match.track)].folder;
        const auto rule = above.of(folder);
        FoundRule& home = rule ? rules[*rule] : lost[folder];
        if (!rule) {
            home.oldFolder = folder;
        }
        home.tracks.push_back(std::move(match));
    }
    for (auto& [folder, rule] : lost) {
        rules.push_back(std::move(rule));
    }
    std::stable_sort(rules.begin(), rules.end(), isFurtherUp);
    return rules;
}

} // namespace melovane
