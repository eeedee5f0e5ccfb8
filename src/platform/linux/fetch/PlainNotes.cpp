#include "platform/linux/fetch/PlainNotes.h"

#include <QChar>
#include <QLatin1String>
#include <QList>
#include <QStringView>

#include <algorithm>
#include <array>
#include <utility>

namespace kestrune::PlainNotes {

namespace {

constexpr char32_t zeroWidthJoiner = 0x200D;
constexpr qsizetype longestReference = 10;

struct Reference {
    QLatin1String name;
    char32_t character;
};

constexpr std::array<Reference, 16> references{{{QLatin1String("amp"), U'&'},
                                                {QLatin1String("lt"), U'<'},
                                                {QLatin1String("gt"), U'>'},
                                                {QLatin1String("quot"), U'"'},
                                                {QLatin1String("apos"), U'\''},
                                                {QLatin1String("nbsp"), U' '},
                                                {QLatin1String("ndash"), U'\u2013'},
                                                {QLatin1String("mdash"), U'\u2014'},
                                                {QLatin1String("lsquo"), U'\u2018'},
                                                {QLatin1String("rsquo"), U'\u2019'},
                                                {QLatin1String("ldquo"), U'\u201C'},
                                                {QLatin1String("rdquo"), U'\u201D'},
                                                {QLatin1String("bull"), U'\u2022'},
                                                {QLatin1String("hellip"), U'\u2026'},
                                                {QLatin1String("copy"), U'\u00A9'},
                                                {QLatin1String("times"), U'\u00D7'}}};

constexpr std::array<QLatin1String, 14> paragraphs{
    {QLatin1String("p"), QLatin1String("h1"), QLatin1String("h2"), QLatin1String("h3"), QLatin1String("h4"),
     QLatin1String("h5"), QLatin1String("h6"), QLatin1String("ul"), QLatin1String("ol"), QLatin1String("table"),
     QLatin1String("pre"), QLatin1String("hr"), QLatin1String("blockquote"), QLatin1String("section")}};
constexpr std::array<QLatin1String, 5> lines{
    {QLatin1String("br"), QLatin1String("div"), QLatin1String("tr"), QLatin1String("li"), QLatin1String("dt")}};
constexpr std::array<QLatin1String, 4> unseen{
    {QLatin1String("script"), QLatin1String("style"), QLatin1String("title"), QLatin1String("template")}};

template <typename Names>
bool isOneOf(const Names& names, QStringView name) {
    return std::any_of(names.begin(), names.end(),
                       [name](QLatin1String known) { return name.compare(known, Qt::CaseInsensitive) == 0; });
}

/// Text as it is put together from HTML: white space counts once, and not at the ends of lines.
class Lines final {
public:
    void add(char32_t character) {
        if (QChar::isSpace(character)) {
            m_spaceWaits = true;
            return;
        }
        if (!m_text.isEmpty() && m_breaksWaiting > 0) {
            m_text += QString(m_breaksWaiting, u'\n');
        } else if (!m_text.isEmpty() && m_spaceWaits && !m_text.endsWith(u' ')) {
            m_text += u' ';
        }
        m_breaksWaiting = 0;
        m_spaceWaits = false;
        m_text += QChar::fromUcs4(character);
    }

    void breakLines(qsizetype count) { m_breaksWaiting = std::max(m_breaksWaiting, count); }

    void addBullet() {
        breakLines(1);
        add(U'\u2022');
        m_text += u' ';
    }

    [[nodiscard]] qsizetype size() const { return m_text.size(); }

    [[nodiscard]] QString take() { return std::move(m_text); }

private:
    QString m_text;
    qsizetype m_breaksWaiting = 0;
    bool m_spaceWaits = false;
};

/// Reads HTML once from its beginning to its end.
class HtmlText final {
public:
    explicit HtmlText(QStringView html) : m_rest(html) {}

    [[nodiscard]] QString read() {
        while (!m_rest.isEmpty() && m_lines.size() <= longest) {
            if (m_rest.front() == u'<' && beginsMarkup()) {
                takeMarkup();
            } else if (m_rest.front() != u'&' || !takeReference()) {
                takeCharacter();
            }
        }
        return m_lines.take();
    }

private:
    [[nodiscard]] bool beginsMarkup() const {
        const QChar next = m_rest.size() > 1 ? m_rest[1] : QChar();
        return next.isLetter() || next == u'/' || next == u'!' || next == u'?';
    }

    /// What follows the next end; nothing follows when there is none.
    void skipPast(QStringView end, qsizetype from = 0) {
        const qsizetype place = m_rest.indexOf(end, from, Qt::CaseInsensitive);
        m_rest = place < 0 ? QStringView() : m_rest.sliced(place + end.size());
    }

    void takeMarkup() {
        if (m_rest.startsWith(u"<!--")) {
            skipPast(u"-->");
            return;
        }
        const bool isEnd = m_rest[1] == u'/';
        const qsizetype from = isEnd ? 2 : 1;
        qsizetype to = from;
        while (to < m_rest.size() && m_rest[to].isLetterOrNumber()) {
            ++to;
        }
        const QString name = m_rest.sliced(from, to - from).toString();
        skipPast(u">", to);
        if (!isEnd && isOneOf(unseen, name)) {
            skipPast(QLatin1String("</") + name);
            skipPast(u">");
        } else if (isOneOf(paragraphs, name)) {
            m_lines.breakLines(2);
        } else if (!isEnd && name.compare(QLatin1String("li"), Qt::CaseInsensitive) == 0) {
            m_lines.addBullet();
        } else if (isOneOf(lines, name)) {
            m_lines.breakLines(1);
        }
    }

    /// False when no reference to a character begins here.
    [[nodiscard]] bool takeReference() {
        const qsizetype end = m_rest.first(std::min(m_rest.size(), longestReference)).indexOf(u';');
        if (end < 2) {
            return false;
        }
        const char32_t character = referenced(m_rest.sliced(1, end - 1));
        if (character == 0) {
            return false;
        }
        m_lines.add(character);
        m_rest = m_rest.sliced(end + 1);
        return true;
    }

    [[nodiscard]] static char32_t referenced(QStringView name) {
        if (name.front() == u'#') {
            const bool isHexadecimal = name.size() > 1 && name[1].toLower() == u'x';
            const char32_t number = name.sliced(isHexadecimal ? 2 : 1).toUInt(nullptr, isHexadecimal ? 16 : 10);
            return number <= QChar::LastValidCodePoint && !QChar::isSurrogate(number) ? number : 0;
        }
        const auto* const known = std::find_if(references.begin(), references.end(),
                                               [name](const Reference& reference) { return reference.name == name; });
        return known == references.end() ? 0 : known->character;
    }

    void takeCharacter() {
        const bool isPair = m_rest.size() > 1 && m_rest[0].isHighSurrogate() && m_rest[1].isLowSurrogate();
        m_lines.add(isPair ? QChar::surrogateToUcs4(m_rest[0], m_rest[1]) : char32_t{m_rest[0].unicode()});
        m_rest = m_rest.sliced(isPair ? 2 : 1);
    }

    QStringView m_rest;
    Lines m_lines;
};

bool isShown(char32_t character) {
    const QChar::Category category = QChar::category(character);
    return character == U'\n' || character == U'\t' || character == zeroWidthJoiner ||
           (category != QChar::Other_Control && category != QChar::Other_Format && category != QChar::Other_Surrogate);
}

}  // namespace

QString fromHtml(const QString& html) {
    return plain(HtmlText(html).read());
}

QString plain(const QString& text) {
    QString shown;
    qsizetype count = 0;
    for (const char32_t character : text.trimmed().toUcs4()) {
        if (!isShown(character)) {
            continue;
        }
        if (++count > longest) {
            return shown + u'\u2026';
        }
        shown += QChar::fromUcs4(character);
    }
    return shown;
}

}  // namespace kestrune::PlainNotes
