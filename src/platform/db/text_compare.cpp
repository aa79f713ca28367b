#include "platform/db/text_compare.h"

#include "platform/db/latin_text.h"

#include <algorithm>

namespace melovane::textcompare {

namespace {

/// The next letter; half a pair of surrogates stands for itself.
char32_t letterAt(QStringView text, qsizetype& at)
{
    const QChar first = text[at++];
    if (first.isHighSurrogate() && at < text.size() && text[at].isLowSurrogate()) {
        return QChar::surrogateToUcs4(first, text[at++]);
    }
    return first.unicode();
}

/// The next letter of UTF-8; of damaged bytes any, but none behind the text is read.
char32_t letterAt(std::string_view text, qsizetype& at)
{
    const auto next = [&] {
        return size_t(at) < text.size() ? static_cast<unsigned char>(text[size_t(at++)]) : 0U;
    };
    const char32_t first = next();
    if (first < 0x80) {
        return first;
    }
    const int followers = first < 0xE0 ? 1 : (first < 0xF0 ? 2 : 3);
    char32_t letter = first & (0x3FU >> followers);
    for (int i = 0; i < followers; ++i) {
        letter = letter << 6U | (next() & 0x3FU);
    }
    return letter;
}

/// True in the middle of a letter.
bool isInside(QStringView text, qsizetype at)
{
    return at > 0 && at < text.size() && text[at].isLowSurrogate() &&
           text[at - 1].isHighSurrogate();
}

bool isInside(std::string_view text, qsizetype at)
{
    return at < qsizetype(text.size()) && (text[size_t(at)] & 0xC0) == 0x80;
}

bool standsAt(QStringView text, qsizetype at, QStringView piece)
{
    return text.sliced(at).startsWith(piece);
}

bool standsAt(std::string_view text, qsizetype at, std::string_view piece)
{
    return text.substr(size_t(at)).starts_with(piece);
}

qsizetype placeOf(QStringView text, qsizetype at, QStringView piece)
{
    return text.indexOf(piece, at);
}

qsizetype placeOf(std::string_view text, qsizetype at, std::string_view piece)
{
    const size_t found = text.find(piece, size_t(at));
    return found == std::string_view::npos ? -1 : qsizetype(found);
}

/// The form of a piece that is looked for in a text.
void assign(QStringView& view, const QString& letters, const QByteArray& /*utf8*/)
{
    view = letters;
}

void assign(std::string_view& view, const QString& /*letters*/, const QByteArray& utf8)
{
    view = {utf8.constData(), size_t(utf8.size())};
}

void append(QString& text, char32_t letter)
{
    if (QChar::requiresSurrogates(letter)) {
        text.append(QChar(QChar::highSurrogate(letter)));
        text.append(QChar(QChar::lowSurrogate(letter)));
    } else {
        text.append(QChar(char16_t(letter)));
    }
}

bool isMark(char32_t letter)
{
    return QChar::isMark(letter);
}

constexpr char32_t kSharpS = 0xDF;

/// Base letters of a folded text: marks dropped, "ß" as "ss". Zero is lifted by one, because it
/// parts the halves of a sort key.
QString baseOf(const QString& folded)
{
    const QString split = folded.normalized(QString::NormalizationForm_D);
    QString base;
    base.reserve(split.size());
    for (qsizetype at = 0; at < split.size();) {
        const char32_t letter = letterAt(split, at);
        if (letter == kSharpS) {
            base.append(u"ss");
        } else if (letter == 0) {
            base.append(QChar(1));
        } else if (!isMark(letter)) {
            append(base, QChar::toCaseFolded(letter));
        }
    }
    return base;
}

/// The base of a single letter, for the classes of `like`.
char32_t baseLetter(char32_t letter)
{
    if (letter < 0x80) {
        return letter;
    }
    if (letter < latin::kEnd) {
        return latin::letters()[letter].base[0];
    }
    QString text;
    append(text, letter);
    text = text.normalized(QString::NormalizationForm_D);
    qsizetype at = 0;
    return QChar::toCaseFolded(letterAt(text, at));
}

int sign(qsizetype order)
{
    return order < 0 ? -1 : (order > 0 ? 1 : 0);
}

int compareUnits(QStringView left, QStringView right)
{
    const qsizetype size = std::min(left.size(), right.size());
    for (qsizetype i = 0; i < size; ++i) {
        if (left[i] != right[i]) {
            return left[i].unicode() < right[i].unicode() ? -1 : 1;
        }
    }
    return sign(left.size() - right.size());
}

int compareFolded(const QString& left, const QString& right)
{
    const int order = compareUnits(baseOf(left), baseOf(right));
    return order != 0 ? order : compareUnits(left, right);
}

/// Where both texts may be cut because everything before is the same: the first difference, or the
/// ASCII letter before it when a mark could stand there. An ASCII letter never joins what stands in
/// front of it, so the order of the rest is the order of the whole. Folders of one library share
/// most of their letters.
template <typename Unit>
qsizetype
sameBeginning(const Unit* left, qsizetype leftSize, const Unit* right, qsizetype rightSize)
{
    const qsizetype size = std::min(leftSize, rightSize);
    qsizetype at = std::mismatch(left, left + size, right).first - left;
    const auto plain = [](Unit unit) { return unit < 0x80; };
    if (at < size && plain(left[at]) && plain(right[at])) {
        return at;
    }
    while (at > 0 && !plain(left[--at])) {
    }
    return at;
}

} // namespace

QString fold(QStringView text)
{
    QString result;
    if (std::all_of(text.begin(), text.end(),
                    [](QChar letter) { return letter.unicode() < latin::kEnd; })) {
        const auto& letters = latin::letters();
        result.resize(text.size());
        std::transform(text.begin(), text.end(), result.begin(),
                       [&](QChar letter) { return QChar(letters[letter.unicode()].folded); });
        return result;
    }
    const QString composed = text.toString().normalized(QString::NormalizationForm_C);
    result.reserve(composed.size());
    for (qsizetype at = 0; at < composed.size();) {
        append(result, QChar::toCaseFolded(letterAt(composed, at)));
    }
    return result;
}

bool equal(QStringView left, QStringView right)
{
    return fold(left) == fold(right);
}

int compare(QStringView left, QStringView right)
{
    const qsizetype same = sameBeginning(left.utf16(), left.size(), right.utf16(), right.size());
    left = left.sliced(same);
    right = right.sliced(same);
    if (const auto order = latin::compareUtf16(left, right)) {
        return *order;
    }
    return compareFolded(fold(left), fold(right));
}

int compareUtf8(const char* left, qsizetype leftSize, const char* right, qsizetype rightSize)
{
    const qsizetype same = sameBeginning(reinterpret_cast<const unsigned char*>(left), leftSize,
                                         reinterpret_cast<const unsigned char*>(right), rightSize);
    const std::string_view leftRest(left + same, size_t(leftSize - same));
    const std::string_view rightRest(right + same, size_t(rightSize - same));
    if (const auto order = latin::compareUtf8(leftRest, rightRest)) {
        return *order;
    }
    return compareFolded(fold(QString::fromUtf8(leftRest)), fold(QString::fromUtf8(rightRest)));
}

QString sortKey(QStringView text)
{
    const QString folded = fold(text);
    const bool plain = std::all_of(folded.begin(), folded.end(), [](QChar letter) {
        return letter.unicode() >= 2 && letter.unicode() < 0x80;
    });
    // Of all texts with one base the ASCII one is the first, so it needs no second half.
    return plain ? folded : baseOf(folded) + QChar(0) + folded;
}

LikePattern::LikePattern(QStringView pattern)
{
    const QString folded = fold(pattern);
    const QStringView view = folded;
    for (qsizetype at = 0; at < view.size() && !m_broken;) {
        const QChar letter = view[at];
        if (letter == u'*') {
            ++at;
            if (m_steps.empty() || m_steps.back().kind != Step::Kind::AnyRun) {
                m_steps.push_back({Step::Kind::AnyRun, {}, {}, {}, false});
            }
        } else if (letter == u'?') {
            ++at;
            m_steps.push_back({Step::Kind::AnyLetter, {}, {}, {}, false});
        } else if (letter == u'#') {
            ++at;
            m_steps.push_back({Step::Kind::Digit, {}, {}, {}, false});
        } else if (letter == u'[') {
            const qsizetype end = view.indexOf(u']', at + 1);
            m_broken = end < 0;
            if (!m_broken) {
                addClass(view.sliced(at + 1, end - at - 1));
                at = end + 1;
            }
        } else {
            addLetter(letterAt(view, at));
        }
    }
    for (Step& step : m_steps) {
        step.utf8 = step.letters.toUtf8();
    }
}

void LikePattern::addLetter(char32_t letter)
{
    if (m_steps.empty() || m_steps.back().kind != Step::Kind::Run) {
        m_steps.push_back({Step::Kind::Run, {}, {}, {}, false});
    }
    append(m_steps.back().letters, letter);
}

void LikePattern::addClass(QStringView inner)
{
    if (inner.isEmpty()) {
        return; // "[]" stands for nothing
    }
    Step step;
    step.kind = Step::Kind::Class;
    step.negated = inner.size() > 1 && inner.front() == u'!';
    for (qsizetype at = step.negated ? 1 : 0; at < inner.size();) {
        const char32_t first = baseLetter(letterAt(inner, at));
        char32_t last = first;
        if (at + 1 < inner.size() && inner[at] == u'-') {
            ++at;
            last = baseLetter(letterAt(inner, at));
        }
        step.ranges.emplace_back(first, last);
    }
    m_steps.push_back(std::move(step));
}

template <typename View> bool LikePattern::matchesStep(const Step& step, View text, qsizetype& at)
{
    if (step.kind == Step::Kind::Run) {
        View piece;
        assign(piece, step.letters, step.utf8);
        if (!standsAt(text, at, piece)) {
            return false;
        }
        at += qsizetype(piece.size());
        return true;
    }
    if (at >= qsizetype(text.size())) {
        return false;
    }
    const char32_t letter = letterAt(text, at);
    if (step.kind == Step::Kind::Digit) {
        return letter >= U'0' && letter <= U'9';
    }
    if (step.kind == Step::Kind::Class) {
        const char32_t base = baseLetter(letter);
        const bool inside =
            std::any_of(step.ranges.begin(), step.ranges.end(), [&](const auto& range) {
                return base >= range.first && base <= range.second;
            });
        return inside != step.negated;
    }
    return true;
}

/// Where the steps behind a "*" may begin next; -1 when nowhere.
template <typename View>
qsizetype LikePattern::nextStart(size_t step, View text, qsizetype at) const
{
    if (at > qsizetype(text.size())) {
        return -1;
    }
    if (step < m_steps.size() && m_steps[step].kind == Step::Kind::Run) {
        View piece;
        assign(piece, m_steps[step].letters, m_steps[step].utf8);
        return placeOf(text, at, piece);
    }
    return at;
}

bool LikePattern::matchesUtf8(const char* text, qsizetype size) const
{
    constexpr qsizetype kRoom = 256;
    char16_t folded[kRoom];
    // Of a text that has to begin with the pattern no more is looked at than the pattern is long.
    const bool prefixOnly = m_steps.size() == 2 && m_steps[0].kind == Step::Kind::Run &&
                            m_steps[1].kind == Step::Kind::AnyRun;
    const qsizetype room = prefixOnly ? std::min(kRoom, m_steps[0].letters.size()) : kRoom;
    const auto letters = latin::foldUtf8(text, size, folded, room);
    // A text that fills the room may go on behind it.
    if (letters && (prefixOnly ? m_steps[0].letters.size() <= kRoom : *letters < kRoom)) {
        return matchesFolded(QStringView(folded, *letters));
    }
    return matches(QString::fromUtf8(text, size));
}

LikePattern::Outline LikePattern::outline() const
{
    Outline result;
    if (m_broken) {
        result.kind = Outline::Kind::Nothing;
        return result;
    }
    const auto isRun = [&](size_t step) { return m_steps[step].kind == Step::Kind::Run; };
    const auto isAny = [&](size_t step) { return m_steps[step].kind == Step::Kind::AnyRun; };
    const size_t count = m_steps.size();
    for (const Step& step : m_steps) {
        if (step.letters.size() > result.inside.size()) {
            result.inside = step.letters;
        }
    }
    if (count > 0 && isRun(0)) {
        result.begin = m_steps[0].letters;
    }
    if (count == 0 || (count == 1 && isRun(0))) {
        result.kind = Outline::Kind::Equal;
    } else if ((count == 2 && isRun(0) && isAny(1)) || (count == 1 && isAny(0))) {
        result.kind = Outline::Kind::Begin;
    } else if (count == 3 && isAny(0) && isRun(1) && isAny(2)) {
        result.kind = Outline::Kind::Inside;
    } else if (count > 2 && isRun(count - 2) && isAny(count - 1) &&
               std::all_of(m_steps.begin(), m_steps.end() - 2,
                           [](const Step& step) { return step.kind == Step::Kind::AnyLetter; })) {
        result.kind = Outline::Kind::Behind;
        result.skipped = int(count) - 2;
    }
    return result;
}

bool LikePattern::matchesFolded(QStringView folded) const
{
    return matchesView(folded);
}

bool LikePattern::matchesFoldedUtf8(std::string_view folded) const
{
    return matchesView(folded);
}

template <typename View> bool LikePattern::matchesView(View folded) const
{
    if (m_broken) {
        return false;
    }
    // A failed try goes back to the last "*" only: what an earlier one could give, it can give too.
    size_t step = 0;
    qsizetype at = 0;
    size_t behindStar = 0;
    qsizetype starAt = -1;
    for (;;) {
        if (step < m_steps.size() && m_steps[step].kind == Step::Kind::AnyRun) {
            behindStar = ++step;
            if (behindStar == m_steps.size()) {
                return true;
            }
            starAt = nextStart(behindStar, folded, at);
            if (starAt < 0) {
                return false;
            }
            at = starAt;
            continue;
        }
        if (step == m_steps.size() && at == qsizetype(folded.size())) {
            return true;
        }
        if (step < m_steps.size() && matchesStep(m_steps[step], folded, at)) {
            ++step;
            continue;
        }
        if (behindStar == 0 || starAt >= qsizetype(folded.size())) {
            return false;
        }
        // A "*" takes whole letters.
        do {
            ++starAt;
        } while (isInside(folded, starAt));
        starAt = nextStart(behindStar, folded, starAt);
        if (starAt < 0) {
            return false;
        }
        at = starAt;
        step = behindStar;
    }
}

} // namespace melovane::textcompare
