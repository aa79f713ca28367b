#include "tagbench/name_reader.h"

#include "platform/system/path_text.h"
#include "platform/system/trim_blanks.h"

#include <algorithm>
#include <array>
#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

struct Marker
{
    QStringView text;
    TrackField field;
};

/// What stands for no field.
constexpr TrackField kNoField = TrackField::FID;

/// The longer marker stands first where one begins like the other.
constexpr std::array<Marker, 6> kMarkers = {{{u"%TO", TrackField::Track},
                                             {u"%I", TrackField::Interpret},
                                             {u"%N", TrackField::Titel},
                                             {u"%A", TrackField::Album},
                                             {u"%G", TrackField::Genre},
                                             {u"%O", kNoField}}};

const Marker* markerAt(QStringView text)
{
    const auto* const found = std::ranges::find_if(kMarkers, [&](const Marker& marker) {
        return text.startsWith(marker.text, Qt::CaseInsensitive);
    });
    return found == kMarkers.end() ? nullptr : found;
}

/// Names between separators, empty ones left out.
QStringList namesOf(QStringView text)
{
    QStringList names;
    qsizetype start = 0;
    for (qsizetype at = 0; at <= text.size(); ++at) {
        if (at == text.size() || path::isSeparator(text[at])) {
            if (at > start) {
                names.append(text.sliced(start, at - start).toString());
            }
            start = at + 1;
        }
    }
    return names;
}

bool isDigit(QChar sign)
{
    return sign >= u'0' && sign <= u'9';
}

} // namespace

NameReader::NameReader(const QString& text, bool underscores)
    : m_underscores(underscores)
{
    for (const QString& name : namesOf(text)) {
        m_parts.push_back(tokens(name));
    }
    std::vector<TrackField> read = fields();
    std::ranges::sort(read);
    m_isUsable = !read.empty() && std::ranges::adjacent_find(read) == read.end() &&
                 std::ranges::all_of(m_parts, [this](const Part& part) { return isClear(part); });
}

NameReader::Part NameReader::tokens(const QString& text)
{
    Part part;
    for (qsizetype at = 0; at < text.size();) {
        if (const Marker* marker = markerAt(QStringView(text).sliced(at))) {
            const auto kind = marker->field == kNoField            ? Token::Kind::Anything
                              : marker->field == TrackField::Track ? Token::Kind::Number
                                                                   : Token::Kind::Field;
            part.push_back({kind, {}, marker->field});
            at += marker->text.size();
            continue;
        }
        if (part.empty() || part.back().kind != Token::Kind::Text) {
            part.push_back({});
        }
        part.back().text += text[at];
        ++at;
    }
    return part;
}

/// Digits end by themselves; any other marker needs a text behind it, or the end of the name.
bool NameReader::isClear(const Part& part) const
{
    return std::ranges::adjacent_find(part, [](const Token& one, const Token& two) {
               return one.kind != Token::Kind::Text && one.kind != Token::Kind::Number &&
                      two.kind != Token::Kind::Text;
           }) == part.end();
}

std::vector<TrackField> NameReader::fields() const
{
    std::vector<TrackField> result;
    for (const Part& part : m_parts) {
        for (const Token& token : part) {
            if (token.kind == Token::Kind::Field || token.kind == Token::Kind::Number) {
                result.push_back(token.field);
            }
        }
    }
    return result;
}

NameReader::Read NameReader::reading(const Token& token, QStringView taken) const
{
    QString text = taken.toString();
    if (m_underscores) {
        text.replace(u'_', u' ');
    }
    text = trimBlanks(text);
    while (token.kind == Token::Kind::Number && text.size() > 1 && text.startsWith(u'0')) {
        text.remove(0, 1);
    }
    return {token.field, text};
}

bool NameReader::readPart(const Part& part, QStringView name, std::vector<Read>& result) const
{
    qsizetype at = 0;
    for (size_t index = 0; index < part.size(); ++index) {
        const Token& token = part[index];
        if (token.kind == Token::Kind::Text) {
            if (!name.sliced(at).startsWith(token.text)) {
                return false;
            }
            at += token.text.size();
            continue;
        }
        qsizetype end = name.size();
        if (token.kind == Token::Kind::Number) {
            end = at;
            while (end < name.size() && isDigit(name[end])) {
                ++end;
            }
        } else if (index + 1 < part.size()) {
            const QString& behind = part[index + 1].text;
            const bool isLast = index + 2 == part.size();
            end = isLast ? name.size() - behind.size() : name.indexOf(behind, at + 1);
        }
        if (end <= at) {
            return false;
        }
        const Read read = reading(token, name.sliced(at, end - at));
        if (read.text.isEmpty()) {
            return false;
        }
        if (token.kind != Token::Kind::Anything) {
            result.push_back(read);
        }
        at = end;
    }
    return at == name.size();
}

std::optional<std::vector<NameReader::Read>> NameReader::read(QStringView folder,
                                                              QStringView name) const
{
    QStringList names = namesOf(folder);
    const qsizetype dot = name.lastIndexOf(u'.');
    names.append((dot > 0 ? name.first(dot) : name).toString());
    if (!m_isUsable || names.size() < qsizetype(m_parts.size())) {
        return {};
    }
    std::vector<Read> result;
    const qsizetype first = names.size() - qsizetype(m_parts.size());
    for (size_t part = 0; part < m_parts.size(); ++part) {
        if (!readPart(m_parts[part], names[first + qsizetype(part)], result)) {
            return {};
        }
    }
    return result;
}

} // namespace melovane
