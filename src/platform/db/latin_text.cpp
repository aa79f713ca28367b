#include "platform/db/latin_text.h"

#include <QString>

namespace melovane::textcompare::latin {

namespace {

constexpr int kAtEnd = -1;
constexpr int kForeign = -2;
constexpr char16_t kSharpS = 0xDF;

Letter makeLetter(char16_t code)
{
    Letter letter;
    letter.folded = char16_t(QChar::toCaseFolded(char32_t(code)));
    if (letter.folded == kSharpS) {
        letter.base = {u's', u's'};
        letter.baseCount = 2;
        return letter;
    }
    const QString split = QString(QChar(letter.folded)).normalized(QString::NormalizationForm_D);
    for (const QChar part : split) {
        if (!part.isMark() && letter.baseCount < 2) {
            // Zero parts the halves of a sort key, so it counts as one.
            const auto base = char16_t(QChar::toCaseFolded(char32_t(part.unicode())));
            letter.base[size_t(letter.baseCount++)] = base == 0 ? char16_t(1) : base;
        }
    }
    return letter;
}

/// Reads UTF-8 letter by letter.
class Utf8Reader
{
public:
    explicit Utf8Reader(std::string_view text)
        : m_at(text.data())
        , m_end(text.data() + text.size())
    {}

    /// A letter below kEnd, kAtEnd or kForeign.
    int next()
    {
        if (m_at == m_end) {
            return kAtEnd;
        }
        const auto lead = static_cast<unsigned char>(*m_at);
        if (lead < 0x80) {
            ++m_at;
            return lead;
        }
        // Leads 0xC2 to 0xCB begin the letters from U+0080 to U+02FF, two bytes each.
        if (lead < 0xC2 || lead > 0xCB || m_end - m_at < 2) {
            return kForeign;
        }
        const auto second = static_cast<unsigned char>(m_at[1]);
        if ((second & 0xC0U) != 0x80) {
            return kForeign;
        }
        m_at += 2;
        return int((lead & 0x1FU) << 6U | (second & 0x3FU));
    }

private:
    const char* m_at;
    const char* m_end;
};

/// Reads UTF-16 letter by letter.
class Utf16Reader
{
public:
    explicit Utf16Reader(QStringView text)
        : m_at(text.utf16())
        , m_end(m_at + text.size())
    {}

    int next()
    {
        if (m_at == m_end) {
            return kAtEnd;
        }
        return *m_at < kEnd ? *m_at++ : kForeign;
    }

private:
    const char16_t* m_at;
    const char16_t* m_end;
};

/// The base letters of a text, one after the other.
template <typename Reader> class BaseReader
{
public:
    explicit BaseReader(Reader reader)
        : m_reader(reader)
    {}

    int next()
    {
        while (m_left == 0) {
            const int code = m_reader.next();
            if (code < 0) {
                return code;
            }
            m_letter = &m_letters[size_t(code)];
            m_left = m_letter->baseCount;
        }
        return m_letter->base[size_t(m_letter->baseCount - m_left--)];
    }

    /// Whether a foreign letter follows, which may join the last one.
    [[nodiscard]] bool foreignFollows() const { return Reader(m_reader).next() == kForeign; }

private:
    Reader m_reader;
    const std::array<Letter, kEnd>& m_letters = letters();
    const Letter* m_letter = nullptr;
    int m_left = 0;
};

int foldedNext(auto& reader)
{
    const int code = reader.next();
    return code < 0 ? code : letters()[size_t(code)].folded;
}

template <typename Reader> std::optional<int> order(Reader left, Reader right)
{
    BaseReader<Reader> leftBase(left);
    BaseReader<Reader> rightBase(right);
    for (;;) {
        const int one = leftBase.next();
        const int other = rightBase.next();
        if (one == kForeign || other == kForeign) {
            return {};
        }
        if (one != other) {
            if (leftBase.foreignFollows() || rightBase.foreignFollows()) {
                return {};
            }
            return one < other ? -1 : 1;
        }
        if (one == kAtEnd) {
            break;
        }
    }
    for (;;) {
        const int one = foldedNext(left);
        const int other = foldedNext(right);
        if (one != other) {
            return one < other ? -1 : 1;
        }
        if (one == kAtEnd) {
            return 0;
        }
    }
}

} // namespace

const std::array<Letter, kEnd>& letters()
{
    static const std::array<Letter, kEnd> table = [] {
        std::array<Letter, kEnd> made;
        for (char16_t code = 0; code < kEnd; ++code) {
            made[code] = makeLetter(code);
        }
        return made;
    }();
    return table;
}

std::optional<qsizetype> foldUtf8(const char* text, qsizetype size, char16_t* out, qsizetype room)
{
    const auto& table = letters();
    Utf8Reader reader({text, size_t(size)});
    for (qsizetype written = 0;; ++written) {
        const int code = reader.next();
        if (code == kForeign) {
            return {};
        }
        if (code == kAtEnd || written == room) {
            return written;
        }
        out[written] = table[size_t(code)].folded;
    }
}

std::optional<int> compareUtf8(std::string_view left, std::string_view right)
{
    return order(Utf8Reader(left), Utf8Reader(right));
}

std::optional<int> compareUtf16(QStringView left, QStringView right)
{
    return order(Utf16Reader(left), Utf16Reader(right));
}

} // namespace melovane::textcompare::latin
