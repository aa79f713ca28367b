#include "platform/system/ini_text.h"

#include "platform/system/trim_blanks.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Begins the stand-in of a sign that cannot stand in a line.
constexpr QChar kEscape(u'\u241B');

QString fold(const QString& name)
{
    return trimBlanks(name).toCaseFolded();
}

QString indexKey(const QString& foldedSection, const QString& key)
{
    // A line feed occurs in neither part, so no two pairs share a text.
    return foldedSection + u'\n' + fold(key);
}

bool isQuoted(QStringView value)
{
    return value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') &&
           value.back() == value.front();
}

QString escaped(const QString& value)
{
    QString result = value;
    result.replace(kEscape, QString(2, kEscape));
    result.replace(u'\n', QString(kEscape) + u'n');
    result.replace(u'\r', QString(kEscape) + u'r');
    result.replace(QChar(u'\0'), QString(kEscape) + u'0');
    return result;
}

std::optional<QChar> unescapedSign(QChar sign)
{
    switch (sign.unicode()) {
    case u'n':
        return u'\n';
    case u'r':
        return u'\r';
    case u'0':
        return QChar(u'\0');
    case kEscape.unicode():
        return kEscape;
    }
    return {};
}

QString unescaped(const QString& value)
{
    if (!value.contains(kEscape)) {
        return value;
    }
    QString result;
    for (qsizetype i = 0; i < value.size(); ++i) {
        const auto sign = value[i] == kEscape && i + 1 < value.size() ? unescapedSign(value[i + 1])
                                                                      : std::nullopt;
        result.append(sign.value_or(value[i]));
        i += sign ? 1 : 0;
    }
    return result;
}

QString readValue(QStringView raw)
{
    QString value = trimBlanks(raw);
    if (isQuoted(value)) {
        value = value.sliced(1, value.size() - 2);
    }
    return unescaped(value);
}

QString writtenValue(const QString& value)
{
    const bool quotes = isQuoted(value) || value.startsWith(u' ') || value.endsWith(u' ');
    const QString text = escaped(value);
    return quotes ? u'"' + text + u'"' : text;
}

bool hasLineEnd(const QString& text)
{
    return text.contains(u'\n') || text.contains(u'\r') || text.contains(QChar(u'\0'));
}

std::optional<QString> sectionName(QStringView line)
{
    const QString text = trimBlanks(line);
    if (!text.startsWith(u'[')) {
        return {};
    }
    const qsizetype close = text.indexOf(u']');
    return fold(text.mid(1, close < 0 ? -1 : close - 1));
}

qsizetype keyEquals(QStringView line)
{
    const qsizetype equals = line.indexOf(u'=');
    const bool comment = trimBlanks(line).startsWith(u';');
    return !comment && equals >= 0 && !trimBlanks(line.first(equals)).isEmpty() ? equals : -1;
}

} // namespace

QString IniText::Line::key() const
{
    return trimBlanks(QStringView(text).first(equals));
}

QString IniText::Line::value() const
{
    return readValue(QStringView(text).sliced(equals + 1));
}

IniText::IniText(const QString& text)
{
    qsizetype start = 0;
    while (start < text.size()) {
        qsizetype at = start;
        while (at < text.size() && text[at] != u'\n' && text[at] != u'\r') {
            ++at;
        }
        const bool pair = text.mid(at, 2) == "\r\n"_L1;
        const qsizetype next = qMin(at + (pair ? 2 : 1), text.size());
        m_lines.push_back({text.sliced(start, at - start), text.sliced(at, next - at), 0, -1});
        start = next;
    }
    index();
}

void IniText::index()
{
    m_sections = {QString()};
    m_keys.clear();
    QHash<QString, int> numbers{{QString(), 0}};
    int section = 0;
    for (size_t i = 0; i < m_lines.size(); ++i) {
        Line& line = m_lines[i];
        if (const auto name = sectionName(line.text)) {
            const auto known = numbers.constFind(*name);
            section = known == numbers.cend() ? int(m_sections.size()) : *known;
            if (known == numbers.cend()) {
                numbers.insert(*name, section);
                m_sections.append(*name);
            }
            line.equals = -1;
        } else {
            line.equals = keyEquals(line.text);
        }
        line.section = section;
        if (line.isKey()) {
            const QString key = indexKey(m_sections[section], line.key());
            if (!m_keys.contains(key)) {
                m_keys.insert(key, int(i));
            }
        }
    }
}

QString IniText::toText() const
{
    QString result;
    for (const Line& line : m_lines) {
        result += line.text + line.end;
    }
    return result;
}

int IniText::findLine(const QString& section, const QString& key) const
{
    return m_keys.value(indexKey(fold(section), key), -1);
}

std::optional<QString> IniText::value(const QString& section, const QString& key) const
{
    const int line = findLine(section, key);
    return line < 0 ? std::nullopt : std::optional(m_lines[size_t(line)].value());
}

QStringList IniText::section(const QString& section) const
{
    QStringList result;
    const qsizetype number = m_sections.indexOf(fold(section));
    for (const Line& line : m_lines) {
        if (line.section == number && line.isKey()) {
            result.append(line.key() + u'=' + line.value());
        }
    }
    return result;
}

bool IniText::isUsable(const QString& section, const QString& key)
{
    const QString name = trimBlanks(key);
    return !hasLineEnd(section) && !section.contains(u']') && !hasLineEnd(key) && !name.isEmpty() &&
           !name.contains(u'=') && !name.startsWith(u';') && !name.startsWith(u'[');
}

QString IniText::lineEnd() const
{
    return m_lines.empty() || m_lines.front().end.isEmpty() ? u"\n"_s : m_lines.front().end;
}

void IniText::insert(size_t at, const QString& text, int section)
{
    if (at > 0 && m_lines[at - 1].end.isEmpty()) {
        m_lines[at - 1].end = lineEnd();
    }
    m_lines.insert(m_lines.begin() + qsizetype(at), Line{text, lineEnd(), section, -1});
}

size_t IniText::makeSection(const QString& section)
{
    if (!m_lines.empty() && !trimBlanks(m_lines.back().text).isEmpty()) {
        insert(m_lines.size(), QString(), 0);
    }
    insert(m_lines.size(), u'[' + trimBlanks(section) + u']', 0);
    return m_lines.size();
}

bool IniText::set(const QString& section, const QString& key, const QString& value)
{
    if (!isUsable(section, key)) {
        return false;
    }
    const int found = findLine(section, key);
    if (found >= 0) {
        Line& line = m_lines[size_t(found)];
        qsizetype start = line.equals + 1;
        while (start < line.text.size() && line.text[start] == u' ') {
            ++start;
        }
        line.text = line.text.first(start) + writtenValue(value);
        return true;
    }
    const qsizetype number = m_sections.indexOf(fold(section));
    size_t at = 0;
    for (size_t i = 0; i < m_lines.size(); ++i) {
        if (m_lines[i].section == number && !trimBlanks(m_lines[i].text).isEmpty()) {
            at = i + 1;
        }
    }
    if (number < 0) {
        at = makeSection(section);
    }
    insert(at, trimBlanks(key) + u'=' + writtenValue(value), 0);
    index();
    return true;
}

bool IniText::remove(const QString& section, const QString& key)
{
    if (!isUsable(section, key)) {
        return false;
    }
    const QString name = indexKey(fold(section), key);
    const auto gone = [&](const Line& line) {
        return line.isKey() && indexKey(m_sections[line.section], line.key()) == name;
    };
    m_lines.erase(std::remove_if(m_lines.begin(), m_lines.end(), gone), m_lines.end());
    index();
    return true;
}

} // namespace melovane
